#include "irfile/FileWindow.h"

#include <algorithm>

namespace cabslot {

FileWindow::FileWindow(std::span<const std::uint8_t> bytes) : size_(bytes.size()), held_(bytes) {}

FileWindow::FileWindow(const std::string& path, const StopCheck& stop) : stop_(stop) {
    whyNot_ = file_.open(path);
    size_ = file_.size();
}

std::span<const std::uint8_t> FileWindow::from(std::uint64_t position) {
    const std::size_t size = std::min<std::uint64_t>(width, size_ - std::min(position, size_));
    if (position >= heldFrom_ && position + size <= heldFrom_ + held_.size())
        return held_.subspan(position - heldFrom_, size);
    if (whyNot_.empty() && isStopped(stop_))
        whyNot_ = "it was interrupted";
    held_ = {};
    if (!whyNot_.empty())
        return {};
    buffer_.resize(size);
    whyNot_ = file_.read(position, buffer_);
    if (!whyNot_.empty())
        return {};
    held_ = buffer_;
    heldFrom_ = position;
    return held_;
}

std::uint64_t FileWindow::afterHole(std::uint64_t position) const {
    return held_.size() == size_ ? position : file_.afterHole(position);
}

std::span<const std::uint8_t> FileWindow::at(std::uint64_t position, std::size_t size) {
    size = std::min<std::uint64_t>(size, size_ - std::min(position, size_));
    if (position >= heldFrom_ && position + size <= heldFrom_ + held_.size())
        return held_.subspan(position - heldFrom_, size);
    const std::span<const std::uint8_t> part = from(position);
    return part.first(std::min(size, part.size()));
}

std::optional<std::uint64_t> FileWindow::find(std::string_view tag, std::uint64_t end) {
    end = std::min(end, size_);
    // Two parts share some bytes, so that no tag is missed between them. A tag holds no 0.
    for (std::uint64_t position = 0; position + tag.size() <= end;
         position = afterHole(position + width - (tag.size() - 1))) {
        std::span<const std::uint8_t> part = from(position);
        part = part.first(std::min<std::uint64_t>(part.size(), end - position));
        if (part.empty())
            return {};
        const std::string_view text(reinterpret_cast<const char*>(part.data()), part.size());
        if (const std::size_t place = text.find(tag); place != std::string_view::npos)
            return position + place;
    }
    return {};
}

} // namespace cabslot
