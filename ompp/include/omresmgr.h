// The resource manager: which resource files are in use, which of them are active, and for every
// type a table of (id, file) pairs that answers where a resource is found. A resource is named by
// its type (compared with case) and an id above 0; the same one may lie in several files, and the
// first active file in the table's order has it.
//
// File names are those given by the user of the file and are compared without case. Process-wide,
// main thread only. Every refusal is a failed non-fatal check and changes nothing unless told
// otherwise.
#pragma once

#include "formats/map/resourcemap.h"
#include "omistream.h"
#include "omres.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct OMResMgrEntry {
    std::int16_t id = 0;
    std::string_view type;
};

/// A list that ends before its first entry with id 0 and no type.
struct OMResMgrTerminated {
    const OMResMgrEntry* entries;
};

/// A resource file in use.
class OMResMgrFile {
  public:
    explicit OMResMgrFile(std::string_view name) : name_(name) {}
    /// Takes the file's resources out of all tables.
    virtual ~OMResMgrFile();
    OMResMgrFile& operator=(OMResMgrFile&&) = delete;

    /// A new stream over one resource.
    [[nodiscard]] virtual std::unique_ptr<OMIStream> getIStream(int id, std::string_view type,
                                                                int bufferMode) const = 0;
    [[nodiscard]] virtual std::vector<std::string> getResTypes() const = 0;
    [[nodiscard]] virtual std::vector<int> getResIDs(std::string_view type) const = 0;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] int useCount() const { return useCount_; }
    [[nodiscard]] bool isActive() const { return activationCount_ > 0; }

    void changeUseCount(int by) { useCount_ += by; }
    void changeActivationCount(int by) { activationCount_ += by; }

    /// Adds resources to the tables of their types, in front of what is there. A type whose table
    /// would become too large is left as it is, after a failed check.
    void addToResTypeList(std::span<const OMResMgrEntry> entries);
    /// Adds all resources that the file says it has.
    void addOwnResources();

  private:
    std::string name_;
    std::set<std::string, std::less<>> types_; ///< in whose tables it has resources
    int useCount_ = 0;
    int activationCount_ = 0;
};

/// A 16-bit resource library.
class OMResMgrFileDLL16 final : public OMResMgrFile {
  public:
    using OMResMgrFile::OMResMgrFile;
    [[nodiscard]] std::unique_ptr<OMIStream> getIStream(int id, std::string_view type,
                                                        int bufferMode) const override;
    [[nodiscard]] std::vector<std::string> getResTypes() const override;
    [[nodiscard]] std::vector<int> getResIDs(std::string_view type) const override;
};

/// A module. Its name is that of the file; an empty one is the program itself.
class OMResMgrFileRes final : public OMResMgrFile {
  public:
    explicit OMResMgrFileRes(std::string_view name);
    [[nodiscard]] std::unique_ptr<OMIStream> getIStream(int id, std::string_view type,
                                                        int bufferMode) const override;
    [[nodiscard]] std::vector<std::string> getResTypes() const override;
    [[nodiscard]] std::vector<int> getResIDs(std::string_view type) const override;

  private:
    std::unique_ptr<OMResFile> module_;
};

/// The table of one type. Sorted by id when it is searched first after a change.
class OMResMgrResType {
  public:
    static constexpr std::size_t kMaxEntries = formats::map::kMostOfOneType;

    [[nodiscard]] bool empty() const { return entries_.empty(); }

    /// False, and nothing added, when the table would have more than kMaxEntries.
    bool addInFront(std::span<const std::int16_t> ids, OMResMgrFile& file);
    void remove(const OMResMgrFile& file);

    /// The first active file of the table that has the id; null when there is none. A second one is
    /// a failed check.
    [[nodiscard]] OMResMgrFile* findActive(int id);

  private:
    struct Entry {
        std::int16_t id;
        OMResMgrFile* file;
    };

    void sort();

    std::vector<Entry> entries_;
    bool sorted_ = false;
};

// Begin to use a file once more, and activate it if wanted. A file that is not in use yet gets its
// resources from the library itself, from a table in a text stream (lines of an id and a type,
// below 64 KB), or from the entries given.
void OMResMgrUseDLL16(std::string_view name, bool activate);
void OMResMgrUseDLL16(std::string_view name, OMIStream& table, bool activate);
void OMResMgrUseDLL16(std::string_view name, OMResMgrTerminated table, bool activate);
void OMResMgrUseDLL16(std::string_view name, std::span<const OMResMgrEntry> table, bool activate);

// The same for modules.
void OMResMgrUseRes(std::string_view name, bool activate);
void OMResMgrUseRes(std::string_view name, OMIStream& table, bool activate);
void OMResMgrUseRes(std::string_view name, OMResMgrTerminated table, bool activate);
void OMResMgrUseRes(std::string_view name, std::span<const OMResMgrEntry> table, bool activate);

/// Activations count: a file is active until it was deactivated as often.
void OMResMgrActivate(std::string_view name);
void OMResMgrDeactivate(std::string_view name);

/// Ends one use. The file is forgotten when that was the last one, unless it is still active.
void OMResMgrStopUsing(std::string_view name, bool deactivate);

/// Whether an active file has the resource.
[[nodiscard]] bool OMResMgrGetIStreamInfo(int id, std::string_view type);
/// A stream over the resource; null when no active file has it.
[[nodiscard]] std::unique_ptr<OMIStream> OMResMgrGetIStream(int id, std::string_view type,
                                                            int bufferMode);
/// The active file that has the resource, or null.
[[nodiscard]] OMResMgrFile* OMResMgrFindFile(int id, std::string_view type);

/// Forgets all files and types.
void OMResMgrClear();
