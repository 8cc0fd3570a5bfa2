// The game's cursors: where the cursors of trinkets come from, while this object lives. Those of
// the platform are made at the start, the others out of `CURSOR` resources when they are wanted
// first.
//
// The resources lie in "cursors.rsc", a library that stands in no map. It is opened by its name
// when no file that is in use has a cursor that is wanted.
#pragma once

#include <map>
#include <memory>
#include <set>

class OMCursor;

class RCursors {
  public:
    /// Resources are forgotten beyond so many, but for those that are shown.
    static constexpr std::size_t kMostKept = 256;

    /// The resource layer has started, and there is a display.
    RCursors();
    /// Before the resource layer is shut down.
    ~RCursors();
    RCursors& operator=(RCursors&&) = delete;

    /// The arrow, and once a line in the log, for a cursor that is not there or damaged.
    [[nodiscard]] std::shared_ptr<const OMCursor> find(int id);
    /// From now on resources are read anew; a cursor that is shown stays. To be called while the
    /// resource layer still has its files.
    void forgetResources();

  private:
    enum class Library { NotAskedFor, Open, Missing };

    [[nodiscard]] std::shared_ptr<const OMCursor> load(int id);
    void openLibrary();
    void closeLibrary();
    void keep(const std::shared_ptr<const OMCursor>& cursor);
    void reportOnce(int id, const char* problem);

    std::map<int, std::shared_ptr<const OMCursor>> cursors_; ///< by number
    std::set<int> reported_;                                 ///< numbers without a cursor
    Library library_ = Library::NotAskedFor;
};
