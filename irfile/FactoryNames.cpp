#include "irfile/FactoryNames.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::array<std::string_view, factoryNameCount> names = {
    " Champer    1x8", "V.Champer   1x8", "Prince.B   1x10", "Prince.S   1x10", "  65DLX    1x12",
    "  57DLX    1x12", "  Kitty    1x12", "  AC15     1x12", "Twinverb.S 2x12", "Twinverb.B 2x12",
    "Matchbox   2x12", " AC30.B    2x12", " AC30.S    2x12", "Superverb  4x10", "59Baseman  4x10",
    " 1960AG    4x12", " 1960BT    4x12", " 1960BV    4x12", "UK.Citrus  4x12", " Solo.L    4x12",
    " Solo.S    4x12", " Rect.S    4x12", " Rect.T    4x12", "German.V   4x12", "German.G   4x12",
    "  B.SVT    1x15", " B.SVT.S   1x15", "  B.SVT    4x10", " B.SVT.S   4x10", "  B.SVT    8x10",
};

static_assert(std::all_of(names.begin(), names.end(),
                          [](std::string_view name) { return name.size() == factoryNameSize; }));

} // namespace

constinit const std::array<std::string_view, factoryNameCount> FileNameBuff = names;

} // namespace cabslot
