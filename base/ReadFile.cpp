#include "base/Files.h"
#include "base/InputFile.h"

#include <algorithm>
#include <new>
#include <utility>

namespace cabslot {

namespace {

FileBytes refused(std::string whyNot) {
    FileBytes file;
    file.whyNot = std::move(whyNot);
    return file;
}

} // namespace

FileBytes readFile(const std::string& path, std::uint32_t most) {
    InputFile input;
    if (std::string why = input.open(path); !why.empty())
        return refused(std::move(why));
    FileBytes file;
    file.fileSize = input.size();
    file.size = static_cast<std::uint32_t>(std::min<std::uint64_t>(file.fileSize, most));
    file.bytes.reset(new (std::nothrow) std::uint8_t[file.size]);
    if (!file.bytes)
        return refused("there is not enough memory to read its " + std::to_string(file.size) +
                       " bytes");
    if (std::string why = input.read(0, {file.bytes.get(), file.size}); !why.empty())
        return refused(std::move(why));
    return file;
}

} // namespace cabslot
