// Derives the IR name from a WAV file's path.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// The file name up to its first ".wav": "/irs/Deep.wav" gives "Deep", "Deep.WAV" gives "Deep.WAV".
/// If ".wav" occurs more than once, the name extends to the end of the last one.
std::string_view irNameFromPath(std::string_view path);

/// Why the pedal cannot take `name`, as a clause for the user; empty if every character is
/// printable ASCII (0x20 to 0x7E). `name` is UTF-8, or whatever bytes the file system holds.
std::string whyNameRefused(std::string_view name);

/// Whether the file's name ends with ".wav", in any case: folders and panels offer only such files.
bool isWavName(std::string_view path);

} // namespace cabslot
