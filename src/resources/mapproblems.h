// What the log is told of one map file: only the first problems, since a text of another kind that
// bears a map's name would fill the disk.
#pragma once

#include <string>
#include <string_view>

class MapProblems {
  public:
    static constexpr int kMaxLogged = 50;

    /// `path` names the map in the log.
    explicit MapProblems(std::string_view path) : path_(path) {}
    void operator()(int line, const char* problem);

  private:
    std::string path_;
    int count_ = 0;
};
