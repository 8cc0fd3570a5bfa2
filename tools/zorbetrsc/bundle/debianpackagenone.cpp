// A build without libarchive.
#include "bundle/debianpackage.h"

namespace rsc {

bool canMakePackages() { return false; }

Bytes compressed(const Bytes&) { throw Refusal("zorbet-rsc was built without libarchive"); }

Bytes makePackage(const std::string&, std::vector<BundleFile>, Stamp) {
    throw Refusal("zorbet-rsc was built without libarchive");
}

} // namespace rsc
