// zorbet-mps: checks scripts.
#include "zorbetmps/commandline.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    try {
        return mps::run(argc, argv, std::cout, std::cerr);
    } catch (const std::exception& error) { // no memory, no terminal
        std::cerr << "zorbet-mps: " << error.what() << "\n";
        return 1;
    }
}
