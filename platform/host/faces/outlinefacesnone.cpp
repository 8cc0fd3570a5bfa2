// Built where the type-face libraries are missing.
#include "platform/host/faces/outlinefaces.h"

namespace platform {

const bool OutlineFaces::kAvailable = false;

struct OutlineFaces::State {};

OutlineFaces::OutlineFaces() = default;
OutlineFaces::~OutlineFaces() = default;

bool OutlineFaces::hasFamily(std::string_view) { return false; }
std::unique_ptr<Typeface> OutlineFaces::open(const TypefaceRequest&) { return nullptr; }
bool OutlineFaces::addFile(const std::string&) { return false; }
void OutlineFaces::removeFile(const std::string&) {}

} // namespace platform
