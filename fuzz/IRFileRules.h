// IR files by the rules of their formats alone, without the code that reads them: a reference for
// IRFile.
#pragma once

#include "base/Pedal.h"
#include "fuzz/Fuzzing.h"
#include "irfile/FactoryNames.h"

#include <string_view>

namespace cabslot::fuzz {

struct IRFileRules {
    View content;
    std::size_t fmt, data; ///< positions of the tags
    bool factory;

    explicit IRFileRules(View bytes)
        : content(bytes), fmt(text().find("fmt ")), data(text().find("data")),
          factory(text().starts_with("VadelIR")) {}

    std::string_view text() const {
        return {reinterpret_cast<const char*>(content.data()), content.size()};
    }
    /// Little-endian; bytes that the file does not have are 0.
    std::uint32_t number(std::size_t at, std::size_t width) const {
        std::uint32_t value = 0;
        for (std::size_t i = width; i-- > 0;)
            value = value << 8 | (at + i < content.size() ? content[at + i] : 0U);
        return value;
    }
    std::uint32_t channels() const { return factory ? 1 : number(fmt + 10, 2); }
    std::uint32_t rate() const { return factory ? 44100 : number(fmt + 12, 4); }
    std::uint32_t bits() const { return factory ? 24 : number(fmt + 22, 2); }

    /// `name` is the one made from the path.
    bool opens(std::string_view name) const {
        if (content.size() < 12)
            return false;
        if (factory)
            return number(7, 1) < factoryNameCount;
        const bool plain = std::all_of(name.begin(), name.end(),
                                       [](char letter) { return letter >= ' ' && letter <= '~'; });
        return text().starts_with("RIFF") && text().compare(8, 4, "WAVE") == 0 &&
               fmt < content.size() && fmt + 24 <= content.size() && data < content.size() &&
               data + 8 <= content.size() && channels() > 0 && bits() >= 8 && plain;
    }

    std::uint32_t frames() const {
        if (!factory)
            return number(data + 4, 4) / (bits() / 8 * channels());
        const std::size_t samples = content.size() <= 512 ? 0 : (content.size() - 512) / 3;
        return static_cast<std::uint32_t>(std::min(samples, irPointCount));
    }
    /// Only for files whose points are not changed: factory, or integers at 44.1 kHz.
    std::uint32_t point(std::size_t i) const {
        const std::size_t width = bits() / 8;
        const std::size_t start = factory ? 512 : data + 8;
        const bool silent = channels() > 2 || (!factory && i >= frames());
        return silent ? 0 : number(start + i * width * channels(), width) << (24 - bits());
    }
};

/// The IR's name: up to the only extension, or up to the end of the last of several.
inline std::string nameIn(std::string_view path) {
    const std::string_view file = path.substr(path.rfind('/') + 1);
    std::vector<std::size_t> extensions;
    for (std::size_t i = 0; i < file.size(); ++i)
        if (file.substr(i).starts_with(".wav"))
            extensions.push_back(i);
    if (extensions.size() > 1)
        return std::string(file.substr(0, extensions.back() + 4));
    return std::string(extensions.empty() ? file : file.substr(0, extensions[0]));
}

} // namespace cabslot::fuzz
