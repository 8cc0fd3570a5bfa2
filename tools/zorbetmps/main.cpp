// zorbet-mps: checks scripts.
#include "zorbetmps/commandline.h"

#include "commandline/commandline.h"

#include <iostream>

int main(int argc, char** argv) {
    return tools::runProgram("zorbet-mps",
                             [&] { return mps::run(argc, argv, std::cout, std::cerr); });
}
