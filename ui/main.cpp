#include "ui/Application.h"

#include "base/VisibleText.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    try {
        return cabslot::runApplication(argc, argv);
    } catch (const std::exception& error) { // out of memory or threads
        std::fprintf(stderr, "cabslot: %s\n", cabslot::visibleText(error.what()).c_str());
        return 2;
    }
}
