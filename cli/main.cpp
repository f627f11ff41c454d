#include "cli/CommandLine.h"

int main(int argc, char** argv) {
    return cabslot::runCommandLine(argc, argv);
}
