// The game's resource layer: finds the resource files at start-up, keeps a record of each,
// activates, deactivates, caches and uncaches them for scripts, and loads resources for everybody.
//
// Resource files lie in "RSC\" beside the game, one directory up and on the CD. A directory with a
// "resource.map" is believed to hold what the map says; in any other one every ".rsc" file is
// opened and asked. Files are known by their bare names, which the search path finds again: a local
// copy is used rather than the one on the CD.
#pragma once

#include "formats/map/audiomap.h"
#include "omid.h"
#include "omistream.h"
#include "omlink.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class RResources {
  public:
    enum class StartUp {
        Ready,
        NoResourceFile, ///< nowhere a resource file: the program's disc cannot be read
    };

    RResources() = default;
    ~RResources() { shutDown(); }
    RResources& operator=(RResources&&) = delete;

    /// Called once, before the application exists. `cdDrive` is the root of the CD ("D:\") or
    /// empty. Every line of "audio.map" is told to `addSequenceSound`, in order.
    StartUp start(std::string_view cdDrive,
                  const OMLinkTo<void(const formats::map::SequenceSound&)>& addSequenceSound);
    /// Forgets all files and looks for them as at the start. Those that are still there are as
    /// active and as cached as they were. Streams go on with what they have.
    void readAgain(const OMLinkTo<void(const formats::map::SequenceSound&)>& addSequenceSound);
    /// The folders whose "scripts" and "RSC" were looked into, in that order: "" is the game's own.
    [[nodiscard]] const std::vector<std::string>& roots() const { return roots_; }
    /// Called after the application is gone; forgets all files. So does the end.
    void shutDown();

    /// Where copies of resource files are put on the hard disk; ends in a backslash.
    void setHomeDirectory(std::string directory) { homeDirectory_ = std::move(directory); }

    // Names of files may be in any case. A name that is not known does nothing.
    void activateDLL(const std::string& name, bool permanent);
    void deactivateDLL(const std::string& name);
    /// Files that were activated permanently stay active unless `force` is set.
    void deactivateAllDLLs(bool force);

    /// Copies a file that is not cached yet to where it is read faster.
    void cacheDLL(const std::string& name, bool inBackground, bool permanently, bool toHardDrive);
    /// Files that were cached permanently stay cached.
    void uncacheDLL(const std::string& name);
    /// As above unless `force` is set.
    void uncacheAllDLLs(bool force);

    /// What all locators call: a stream over the resource, or null after a message to the person.
    [[nodiscard]] std::unique_ptr<OMIStream> load(int id, std::string_view type, int bufferMode);

    // Sounds that are read piece by piece while they play, by their ids. All others are read as a
    // whole.
    void addStreamedSound(int id) { streamedSounds_.insert(OMNarrowId(id)); }
    void removeStreamedSound(int id) { streamedSounds_.erase(OMNarrowId(id)); }
    [[nodiscard]] std::unique_ptr<OMIStream> loadSound(int id);

  private:
    struct FileRecord {
        std::string name; ///< lower case, at most formats::map::kMaxFileName characters
        bool active = false;
        bool activatedPermanently = false;
        bool cachedPermanently = false;
    };

    /// What is to be so again: a file, and how its copy was made.
    struct FileState {
        FileRecord record;
        bool isCached = false;
        bool inBackground = false;
        bool toHardDrive = false;
    };

    void findFiles(const OMLinkTo<void(const formats::map::SequenceSound&)>& addSequenceSound);
    void forgetFiles();
    [[nodiscard]] static FileState stateOf(const FileRecord& record);
    void restore(const FileState& state);
    void addDirectories(const std::string& root);
    void addFile(const std::string& name);
    bool readMap(const std::string& path);
    void registerBlock(const formats::map::Library& library);
    void scanDirectory(const std::string& directory);
    void scanFile(const std::string& name);
    void
    readSequenceSounds(const OMLinkTo<void(const formats::map::SequenceSound&)>& addSequenceSound);
    FileRecord* find(std::string_view name);
    void deactivate(FileRecord& record);
    /// False when the copy would take the place of another file.
    bool makeCopy(const FileRecord& record, bool inBackground, bool toHardDrive) const;
    void uncache(const FileRecord& record);
    void report(const std::string& text);

    std::vector<std::string> roots_;
    std::vector<FileRecord> files_;
    std::map<std::string, std::size_t, std::less<>> places_; ///< of the names in `files_`
    std::vector<std::string> mapIdentifiers_;                ///< of the maps read; start-up only
    std::set<int> streamedSounds_;
    std::string homeDirectory_;
};
