// The three standard streams of a program.
#pragma once

namespace cabslot {

/// Opens those that the program was started without on the null device. Otherwise the next thing
/// that is opened, such as the pedal, would get what is printed. Call it first in main.
void openStandardStreams();

} // namespace cabslot
