#include "world/savedworld.h"

#include "omlog.h"
#include "omplatform.h"
#include "startup/programresources.h"

#include <utility>

namespace {

int reasonText(RSafeFile::Trouble trouble) {
    switch (trouble) {
    case RSafeFile::Trouble::Full: return warningtext::kDiskIsFull;
    case RSafeFile::Trouble::Forbidden: return warningtext::kMayNotWrite;
    case RSafeFile::Trouble::InUse: return warningtext::kFolderInUse;
    case RSafeFile::Trouble::IsFolder:
    case RSafeFile::Trouble::Other: break;
    }
    return warningtext::kSavingFails;
}

bool isInUse(const platform::FolderClaim& claim) {
    return claim.refusal == std::errc::device_or_resource_busy;
}

void logHolder(const std::string& folder, const platform::FolderClaim& claim) {
    OMLog::writef(OMLog::Kind::Warning, "%s is in use by %s: end that one to save games there",
                  folder.c_str(), claim.holder.empty() ? "another program" : claim.holder.c_str());
}

} // namespace

SavedWorld::SavedWorld(const std::string& homeDirectory)
    : home_(homeDirectory), claim_(claimHome()), file_(OMPlatform().files(), home_ + kDataFile),
      memory_([this] { return read(); }, [this](const std::string& bytes) { write(bytes); }) {}

RWarningSwitches SavedWorld::switches() {
    return {.read =
                [this](std::string_view name) {
                    const world::Property* property = memory_.global(name);
                    return property ? property->text() : std::string();
                },
            .write =
                [this](std::string_view name, std::string_view value) {
                    if (world::Property* property = memory_.global(name)) property->setText(value);
                }};
}

void SavedWorld::saveAtOnce() {
    if (world::WorldMemory::current() == &memory_) memory_.writeDataFile();
    OMLog::close();
}

platform::FolderClaim SavedWorld::claimHome() {
    OMLog::writef(OMLog::Kind::Message, "Data file is: %s%s", home_.c_str(), kDataFile);
    platform::FolderClaim claim = OMPlatform().files().claimFolder(home_);
    while (isInUse(claim)) {
        logHolder(home_, claim);
        withoutStoring_ = !RAskToRetry(RWarningText(warningtext::kAlreadyOpen));
        if (withoutStoring_) break;
        claim = OMPlatform().files().claimFolder(home_);
    }
    if (withoutStoring_) {
        told_ = true;
        OMLog::write(OMLog::Kind::Warning, "Nothing is stored in this run, as the player chose");
    } else if (claim.refusal) {
        OMLog::writef(OMLog::Kind::Error,
                      "Nothing can be stored in %s: %s.%s Each save tries it again", home_.c_str(),
                      claim.refusal.message().c_str(), RSafeFile::remedyFor(claim.refusal));
        tellNotKept(claim.refusal);
    }
    return claim;
}

bool SavedWorld::mayStore() {
    // The home directory may be there now, and somebody else's.
    if (!withoutStoring_ && claim_.refusal && !claim_.hold) {
        claim_ = OMPlatform().files().claimFolder(home_);
        if (isInUse(claim_)) logHolder(home_, claim_);
    }
    if (!isInUse(claim_)) return true;
    OMLog::writef(OMLog::Kind::Warning, "%s is not stored: another program has its folder",
                  file_.path().c_str());
    return false;
}

std::optional<std::string> SavedWorld::read() {
    RSafeFile::Contents contents = file_.read();
    if (contents.state == RSafeFile::State::Whole) return std::move(contents.bytes);
    if (contents.state == RSafeFile::State::Unreadable)
        tellOnce(RWarningText(warningtext::kCannotOpen) +
                 OMPlatform().files().hostName(file_.path()) +
                 RWarningText(warningtext::kStaysAsItIs));
    return std::nullopt;
}

void SavedWorld::write(const std::string& bytes) {
    if (!mayStore()) return tellNotKept(claim_.refusal);
    if (!memory_.wasReadWhole() && !std::exchange(keptBeside_, true)) file_.keepBeside();
    if (!file_.store(bytes)) return tellNotKept(file_.whyNotStored());
    told_ = false;
}

void SavedWorld::tellNotKept(std::error_code why) {
    tellOnce(RWarningText(warningtext::kNotKept) + OMPlatform().files().hostName(home_) +
             RWarningText(reasonText(RSafeFile::troubleOf(why))));
}

void SavedWorld::tellOnce(const std::string& text) {
    if (!std::exchange(told_, true)) RTellPlayer(text + RWarningText(warningtext::kNothingIsKept));
}
