#include "omiosection.h"

std::mutex& OMIOSection() {
    static auto& section = *new std::mutex; // workers may hold it while the process ends
    return section;
}
