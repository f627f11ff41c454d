#include "ui/Problem.h"

#include "base/VisibleText.h"

#include <cstdio>

namespace cabslot {

void printProblem(const std::string& line) {
    std::fprintf(stderr, "cabslot: %s\n", visibleText(line).c_str());
}

} // namespace cabslot
