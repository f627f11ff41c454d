#include "ui/Application.h"

int main(int argc, char** argv) {
    return cabslot::runApplication(argc, argv);
}
