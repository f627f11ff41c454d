#include "base/SystemError.h"

#include <system_error>

namespace cabslot {

std::string systemErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace cabslot
