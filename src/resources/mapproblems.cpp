#include "resources/mapproblems.h"

#include "omlog.h"

void MapProblems::operator()(int line, const char* problem) {
    if (count_ > kMaxLogged) return;
    if (++count_ > kMaxLogged) problem = "further problems of this map are not logged";
    OMLog::writef(OMLog::Kind::Error, "%s line %d: %s", path_.c_str(), line, problem);
}
