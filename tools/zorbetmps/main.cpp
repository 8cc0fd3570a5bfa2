// zorbet-mps: checks scripts, compiles them, lays them out.
#include "zorbetmps/commandline.h"

#include "platform/commandline/commandline.h"

#include <iostream>

int main(int argc, char** argv) {
    return commandline::runProgram("zorbet-mps",
                                   [&] { return mps::run(argc, argv, std::cout, std::cerr); });
}
