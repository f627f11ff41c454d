// The IR name that a WAV file's path gives.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// The file name up to its first ".wav": "/irs/Deep.wav" gives "Deep", "Deep.WAV" all of itself.
/// A file name that holds ".wav" more than once gives all of itself up to the end of the last one.
std::string_view irNameFromPath(std::string_view path);

/// Why the pedal cannot take `name`, in words for the user; empty when every character lies in the
/// printable ASCII range (0x20 to 0x7E). `name` is UTF-8, or whatever bytes the file system holds.
std::string whyNameRefused(std::string_view name);

} // namespace cabslot
