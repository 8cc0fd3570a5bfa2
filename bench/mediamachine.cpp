#include "mediamachine.h"

#include "ompath.h"
#include "omplatform.h"
#include "omresmgr.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr platform::Rect kScreen{0, 0, 640, 480};
constexpr int kDepth = 8;

/// Beside the program rather than in the system's folder for temporary files, which may be memory.
std::filesystem::path makeFolder() {
    std::string name = (std::filesystem::current_path() / "bench-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no folder can be made in " + name);
    return name;
}

} // namespace

MediaMachine::MediaMachine() : folder_(makeFolder()) {
    platform::HeadlessOptions options;
    options.host.content = options.host.home = folder_.string();
    options.report = &report_;
    platform_.emplace(options);
    OMSetPlatform(&*platform_);
    app_.emplace(OMApp::DisplayMode::PopUp, OMColor(), kScreen, kDepth);
    app_->begin();
}

MediaMachine::~MediaMachine() {
    OMResMgrClear();
    OMPathClear();
    app_.reset();
    OMSetPlatform(nullptr);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void MediaMachine::put(const std::string& name, std::span<const std::byte> bytes) const {
    const std::filesystem::path path = hostPath(name);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error(path.string() + " cannot be written");
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    ::fsync(descriptor);
    ::close(descriptor);
}
