// What the log is told of one map file: only the first problems, since a text of another kind that
// bears a map's name would fill the disk.
#pragma once

#include "omlog.h"

#include <string>
#include <string_view>

class MapProblems {
  public:
    static constexpr int kMaxLogged = 50;

    /// `path` names the map in the log.
    explicit MapProblems(std::string_view path) : path_(path) {}
    void operator()(int line, const char* problem) {
        if (count_ > kMaxLogged) return;
        if (++count_ > kMaxLogged) problem = "further problems of this map are not logged";
        OMLog::writef(OMLog::Kind::Error, "%s line %d: %s", path_.c_str(), line, problem);
    }

  private:
    std::string path_;
    int count_ = 0;
};
