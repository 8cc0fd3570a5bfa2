#include "bundle/debianpackage.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <memory>
#include <set>
#include <utility>

namespace rsc {

namespace {

constexpr int kFileMode = 0644;
constexpr int kProgramMode = 0755; ///< of folders, too

/// An archive that grows in memory.
class Archive {
  public:
    /// The calls that choose its form and how it is compressed; each gives ARCHIVE_OK.
    template <class... Form>
    explicit Archive(Form... form) : archive_(::archive_write_new()) {
        (check(form(archive_.get())), ...);
        check(::archive_write_set_bytes_in_last_block(archive_.get(), 1)); // nothing is filled up
        check(::archive_write_open(archive_.get(), &bytes_, nullptr, append, nullptr));
    }

    void add(const std::string& name, const Bytes& data, int mode, Stamp stamp) {
        put(name, AE_IFREG, data.size(), mode, stamp);
        if (::archive_write_data(archive_.get(), data.data(), data.size()) !=
            static_cast<la_ssize_t>(data.size()))
            fail();
    }
    void addFolder(const std::string& name, Stamp stamp) {
        put(name, AE_IFDIR, 0, kProgramMode, stamp);
    }

    [[nodiscard]] Bytes finish() {
        check(::archive_write_close(archive_.get()));
        return std::move(bytes_);
    }

  private:
    struct Free {
        void operator()(struct archive* it) const { ::archive_write_free(it); }
        void operator()(struct archive_entry* it) const { ::archive_entry_free(it); }
    };

    void put(const std::string& name, unsigned type, std::size_t size, int mode, Stamp stamp) {
        const std::unique_ptr<struct archive_entry, Free> entry(::archive_entry_new());
        ::archive_entry_set_pathname(entry.get(), name.c_str());
        ::archive_entry_set_filetype(entry.get(), type);
        ::archive_entry_set_size(entry.get(), static_cast<la_int64_t>(size));
        ::archive_entry_set_perm(entry.get(), static_cast<mode_t>(mode));
        ::archive_entry_set_mtime(entry.get(), stamp, 0);
        ::archive_entry_set_uname(entry.get(), "root");
        ::archive_entry_set_gname(entry.get(), "root");
        check(::archive_write_header(archive_.get(), entry.get()));
    }

    static la_ssize_t append(struct archive*, void* bytes, const void* data, std::size_t size) {
        auto& to = *static_cast<Bytes*>(bytes);
        const auto* begin = static_cast<const std::uint8_t*>(data);
        to.insert(to.end(), begin, begin + size);
        return static_cast<la_ssize_t>(size);
    }

    void check(int result) const {
        if (result != ARCHIVE_OK) fail();
    }
    [[noreturn]] void fail() const {
        const char* why = ::archive_error_string(archive_.get());
        throw Refusal(std::string("the Debian package cannot be made: ") +
                      (why ? why : "no memory"));
    }

    Bytes bytes_; ///< outlives the archive
    std::unique_ptr<struct archive, Free> archive_;
};

int asTar(struct archive* it) { return ::archive_write_set_format_gnutar(it); }
int withXz(struct archive* it) { return ::archive_write_add_filter_xz(it); }
int withGzip(struct archive* it) {
    const int result = ::archive_write_add_filter_gzip(it);
    if (result != ARCHIVE_OK) return result;
    ::archive_write_set_filter_option(it, "gzip", "compression-level", "9");
    return ::archive_write_set_filter_option(it, "gzip", "timestamp", nullptr);
}

/// Folders stand before what is in them.
Bytes makeTree(std::vector<BundleFile>& files, Stamp stamp) {
    Archive tree(asTar, withXz);
    std::ranges::sort(files, {}, &BundleFile::name);
    std::set<std::string> folders;
    tree.addFolder("./", stamp);
    for (const BundleFile& file : files) {
        for (auto end = file.name.find('/'); end != std::string::npos;
             end = file.name.find('/', end + 1))
            if (const std::string folder = file.name.substr(0, end + 1);
                folders.insert(folder).second)
                tree.addFolder("./" + folder, stamp);
        tree.add("./" + file.name, file.data, file.isProgram ? kProgramMode : kFileMode, stamp);
    }
    return tree.finish();
}

} // namespace

bool canMakePackages() { return true; }

Bytes compressed(const Bytes& data) {
    Archive file([](struct archive* it) { return ::archive_write_set_format_raw(it); }, withGzip);
    file.add("data", data, kFileMode, 0);
    return file.finish();
}

Bytes makePackage(const std::string& control, std::vector<BundleFile> files, Stamp stamp) {
    Archive about(asTar, withXz);
    about.addFolder("./", stamp);
    about.add("./control", asBytes(control), kFileMode, stamp);
    Archive package([](struct archive* it) { return ::archive_write_set_format_ar_bsd(it); });
    package.add("debian-binary", asBytes("2.0\n"), kFileMode, stamp);
    package.add("control.tar.xz", about.finish(), kFileMode, stamp);
    package.add("data.tar.xz", makeTree(files, stamp), kFileMode, stamp);
    return package.finish();
}

} // namespace rsc
