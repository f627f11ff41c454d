#include "ui/Application.h"
#include "ui/Problem.h"

#include <exception>

int main(int argc, char** argv) {
    try {
        return cabslot::runApplication(argc, argv);
    } catch (const std::exception& error) { // out of memory or threads
        cabslot::printProblem(error.what());
        return 2;
    }
}
