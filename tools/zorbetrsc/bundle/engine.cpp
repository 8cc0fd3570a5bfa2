#include "bundle/engine.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <elf.h>
#include <map>
#include <optional>

namespace rsc {

namespace {

constexpr const char* kNoEngine =
    "the engine is no program of 64-bit Linux, or is damaged; install zorbet anew";

struct Machine {
    Elf64_Half number;
    const char* name;
    const char* architecture;
};
constexpr std::array<Machine, 3> kMachines{{{EM_X86_64, "x86_64", "amd64"},
                                            {EM_AARCH64, "aarch64", "arm64"},
                                            {EM_RISCV, "riscv64", "riscv64"}}};

struct Package {
    std::string_view library;
    const char* name;
};
constexpr std::array<Package, 10> kPackages{{{"libSDL2-2.0.so.0", "libsdl2-2.0-0"},
                                             {"libc.so.6", "libc6"},
                                             {"libfontconfig.so.1", "libfontconfig1"},
                                             {"libfreetype.so.6", "libfreetype6"},
                                             {"libgcc_s.so.1", "libgcc-s1"},
                                             {"libm.so.6", "libc6"},
                                             {"libpixman-1.so.0", "libpixman-1-0"},
                                             {"libpng16.so.16", "libpng16-16"},
                                             {"libpugixml.so.1", "libpugixml1v5"},
                                             {"libstdc++.so.6", "libstdc++6"}}};

/// Which version of the C++ library brought which of its interfaces, "GLIBCXX_3.4.N".
struct CxxVersion {
    int interface;
    const char* package;
};
constexpr std::array<CxxVersion, 6> kCxxVersions{
    {{29, "11"}, {30, "12"}, {31, "13"}, {32, "13.2"}, {33, "14"}, {34, "15"}}};

/// Records and texts of the file, read within its bounds.
class ElfFile {
  public:
    explicit ElfFile(const Bytes& bytes) : bytes_(bytes), head_(at<Elf64_Ehdr>(0)) {
        if (std::memcmp(head_.e_ident, ELFMAG, SELFMAG) != 0 ||
            head_.e_ident[EI_CLASS] != ELFCLASS64 || head_.e_ident[EI_DATA] != ELFDATA2LSB ||
            head_.e_shstrndx >= head_.e_shnum)
            throw Refusal(kNoEngine);
        for (std::size_t i = 0; i < head_.e_shnum; ++i)
            sections_.push_back(at<Elf64_Shdr>(head_.e_shoff + i * sizeof(Elf64_Shdr)));
    }

    template <class Record>
    [[nodiscard]] Record at(std::size_t place) const {
        Record record;
        if (place > bytes_.size() || bytes_.size() - place < sizeof record)
            throw Refusal(kNoEngine);
        std::memcpy(&record, bytes_.data() + place, sizeof record);
        return record;
    }

    [[nodiscard]] const Elf64_Ehdr& head() const { return head_; }
    [[nodiscard]] const std::vector<Elf64_Shdr>& sections() const { return sections_; }
    [[nodiscard]] ByteSpan content(const Elf64_Shdr& section) const {
        if (section.sh_type == SHT_NOBITS) return {};
        if (section.sh_offset > bytes_.size() ||
            bytes_.size() - section.sh_offset < section.sh_size)
            throw Refusal(kNoEngine);
        return ByteSpan(bytes_).subspan(section.sh_offset, section.sh_size);
    }

    [[nodiscard]] const Elf64_Shdr* find(Elf64_Word type) const {
        const auto found = std::ranges::find(sections_, type, &Elf64_Shdr::sh_type);
        return found == sections_.end() ? nullptr : &*found;
    }

    /// A text in the table that the section is linked with.
    [[nodiscard]] std::string text(const Elf64_Shdr& section, std::size_t place) const {
        if (section.sh_link >= sections_.size()) throw Refusal(kNoEngine);
        const ByteSpan all = content(sections_[section.sh_link]);
        const auto begin = all.begin() + std::ssize(all.first(std::min(place, all.size())));
        return {begin, std::find(begin, all.end(), 0)};
    }

  private:
    const Bytes& bytes_;
    Elf64_Ehdr head_;
    std::vector<Elf64_Shdr> sections_;
};

/// What is loaded, with the names of its sections; tables that are not loaded lie behind it.
class Stripped {
  public:
    explicit Stripped(const ElfFile& file) : file_(file), numbers_(file.sections().size()) {
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            const Elf64_Shdr& section = file.sections()[i];
            const bool isLoaded = (section.sh_flags & SHF_ALLOC) != 0;
            if (i != 0 && i != file.head().e_shstrndx && !isLoaded) continue;
            numbers_[i] = static_cast<Elf64_Half>(kept_.size());
            kept_.push_back(section);
            if (isLoaded && section.sh_type != SHT_NOBITS)
                end_ = std::max(end_, section.sh_offset + section.sh_size);
        }
    }

    [[nodiscard]] Bytes bytes(const Bytes& all) {
        Elf64_Ehdr head = file_.head();
        for (std::size_t i = 0; i < head.e_phnum; ++i) {
            const auto part = file_.at<Elf64_Phdr>(head.e_phoff + i * sizeof(Elf64_Phdr));
            end_ = std::max(end_, part.p_offset + part.p_filesz);
        }
        if (end_ > all.size()) throw Refusal(kNoEngine);
        Bytes result(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(end_));
        const ByteSpan names = file_.content(file_.sections()[head.e_shstrndx]);
        head.e_shstrndx = numbers_[head.e_shstrndx];
        kept_[head.e_shstrndx].sh_offset = result.size();
        result.insert(result.end(), names.begin(), names.end());
        result.resize((result.size() + kAligned - 1) / kAligned * kAligned);
        head.e_shoff = result.size();
        head.e_shnum = static_cast<Elf64_Half>(kept_.size());
        for (const Elf64_Shdr& section : kept_) append(result, renumbered(section));
        std::memcpy(result.data(), &head, sizeof head);
        return result;
    }

  private:
    static constexpr std::size_t kAligned = 8;

    [[nodiscard]] Elf64_Shdr renumbered(Elf64_Shdr section) const {
        if (section.sh_link < numbers_.size()) section.sh_link = numbers_[section.sh_link];
        const bool namesSection = (section.sh_flags & SHF_INFO_LINK) != 0;
        if (namesSection && section.sh_info < numbers_.size())
            section.sh_info = numbers_[section.sh_info];
        return section;
    }

    static void append(Bytes& to, const Elf64_Shdr& section) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(&section);
        to.insert(to.end(), bytes, bytes + sizeof section);
    }

    const ElfFile& file_;
    std::vector<Elf64_Half> numbers_; ///< new ones, by the old ones; 0: taken out
    std::vector<Elf64_Shdr> kept_;
    std::size_t end_ = 0; ///< of what is loaded
};

/// "GLIBC_2.34" as {2, 34}; none when the text begins otherwise.
std::optional<std::vector<int>> versionBehind(std::string_view prefix, std::string_view text) {
    if (!text.starts_with(prefix)) return std::nullopt;
    std::vector<int> numbers{0};
    for (const char c : text.substr(prefix.size())) {
        if (c == '.')
            numbers.push_back(0);
        else if (c >= '0' && c <= '9' && numbers.back() < 1000)
            numbers.back() = numbers.back() * 10 + (c - '0');
        else
            return std::nullopt;
    }
    return numbers;
}

/// The names of versions that the program asks of its libraries.
std::vector<std::string> versionsNeeded(const ElfFile& file) {
    std::vector<std::string> names;
    const Elf64_Shdr* section = file.find(SHT_GNU_verneed);
    if (!section) return names;
    std::size_t place = section->sh_offset;
    for (Elf64_Word i = 0; i < section->sh_info; ++i) {
        const auto library = file.at<Elf64_Verneed>(place);
        std::size_t version = place + library.vn_aux;
        for (Elf64_Half n = 0; n < library.vn_cnt; ++n) {
            const auto needed = file.at<Elf64_Vernaux>(version);
            names.push_back(file.text(*section, needed.vna_name));
            version += needed.vna_next;
        }
        place += library.vn_next;
    }
    return names;
}

std::string joined(const std::vector<int>& version) {
    std::string text;
    for (const int number : version) text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

/// By the names of packages.
std::map<std::string, std::string> leastVersions(const ElfFile& file) {
    std::vector<int> c;
    int cxx = 0;
    for (const std::string& name : versionsNeeded(file)) {
        if (const auto version = versionBehind("GLIBC_", name)) c = std::max(c, *version);
        const auto version = versionBehind("GLIBCXX_3.4.", name);
        if (version && version->size() == 1) cxx = std::max(cxx, version->front());
    }
    std::map<std::string, std::string> versions{{"libc6", joined(c)}};
    const auto* found = std::ranges::find(kCxxVersions, cxx, &CxxVersion::interface);
    if (found != kCxxVersions.end()) versions["libstdc++6"] = found->package;
    return versions;
}

std::vector<NeededLibrary> librariesOf(const ElfFile& file) {
    std::vector<NeededLibrary> needs;
    const Elf64_Shdr* section = file.find(SHT_DYNAMIC);
    if (!section) throw Refusal(kNoEngine);
    const auto versions = leastVersions(file);
    for (std::size_t at = 0; at < section->sh_size; at += sizeof(Elf64_Dyn)) {
        const auto entry = file.at<Elf64_Dyn>(section->sh_offset + at);
        if (entry.d_tag != DT_NEEDED) continue;
        NeededLibrary library{file.text(*section, entry.d_un.d_val), {}, {}};
        const auto* known = std::ranges::find(kPackages, library.file, &Package::library);
        if (known != kPackages.end()) library.package = known->name;
        if (const auto least = versions.find(library.package); least != versions.end())
            library.atLeast = least->second;
        const bool isLoader = library.file.starts_with("ld-linux");
        if (!isLoader) needs.push_back(std::move(library));
    }
    std::ranges::sort(needs, {}, &NeededLibrary::file);
    return needs;
}

} // namespace

Engine readEngine(const Bytes& program) {
    const ElfFile file(program);
    const auto* machine = std::ranges::find(kMachines, file.head().e_machine, &Machine::number);
    if (machine == kMachines.end()) throw Refusal(kNoEngine);
    return {Stripped(file).bytes(program), machine->name, machine->architecture, librariesOf(file)};
}

} // namespace rsc
