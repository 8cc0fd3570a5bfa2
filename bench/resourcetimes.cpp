#include "resourcetimes.h"

#include "formats/library/writer.h"
#include "mediamachine.h"

#include "omcachedfile.h"
#include "omistream.h"
#include "omopenlibrary.h"
#include "omresmgr.h"

#include <memory>
#include <numeric>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t kIds = 8000;
constexpr std::size_t kLookups = 1000000;
constexpr std::size_t kResourceBytes = 32768;
constexpr std::size_t kResources = 64;
constexpr int kReads = 2000;
constexpr const char* kLibrary = "bench.rsc";
constexpr const char* kType = "WAVE";

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

/// 1 to `count`, each once, in an order that looks like chance and is always the same.
std::vector<std::int16_t> scatteredIds(std::size_t count) {
    constexpr std::size_t kStep = 3557; // has no factor in common with 8,000
    std::vector<std::int16_t> ids(count);
    for (std::size_t i = 0; i < count; ++i)
        ids[i] = static_cast<std::int16_t>(i * kStep % count + 1);
    return ids;
}

formats::Bytes makeLibrary() {
    std::vector<formats::library::Resource> resources;
    for (std::size_t i = 0; i < kResources; ++i) {
        formats::library::Resource resource{kType, static_cast<std::uint16_t>(i + 1), {}};
        resource.data.assign(kResourceBytes, static_cast<std::uint8_t>(i));
        resources.push_back(std::move(resource));
    }
    return formats::library::write("BENCH", resources).value;
}

std::size_t readResource(int id) {
    const std::unique_ptr<OMIStream> stream = OMResMgrGetIStream(id, kType, kOMIStreamCache);
    return stream ? stream->readAll().size() : 0;
}

double nanosecondsOfRead() {
    std::size_t bytes = 0;
    const double taken = cpuNanoseconds([&] {
        for (int i = 0; i < kReads; ++i)
            bytes += readResource(i % static_cast<int>(kResources) + 1);
    });
    require(bytes == kReads * kResourceBytes, "a resource was not read whole");
    return taken / kReads;
}

double nanosecondsOfPlainRead(const std::string& path) {
    std::size_t bytes = 0;
    const double taken = cpuNanoseconds([&] {
        for (int i = 0; i < kReads; ++i) {
            const auto buffer = std::make_unique_for_overwrite<std::byte[]>(kResourceBytes);
            const int file = ::open(path.c_str(), O_RDONLY);
            bytes += static_cast<std::size_t>(::read(file, buffer.get(), kResourceBytes));
            ::close(file);
        }
    });
    require(bytes == kReads * kResourceBytes, "the plain file was not read whole");
    return taken / kReads;
}

} // namespace

LookupTimes measureLookups(int repetitions) {
    MediaMachine machine;
    const std::vector<std::int16_t> ids = scatteredIds(kIds);
    std::vector<OMResMgrEntry> entries;
    for (const std::int16_t id : ids) entries.push_back({id, kType});
    LookupTimes times;
    times.resources = kIds;
    for (int i = 0; i < repetitions; ++i) {
        OMResMgrUseDLL16(kLibrary, entries, true);
        bool found = true;
        times.firstNanoseconds.add(
            cpuNanoseconds([&] { found &= OMResMgrGetIStreamInfo(ids.front(), kType); }));
        times.nanoseconds.add(cpuNanoseconds([&] {
                                  for (std::size_t n = 0; n < kLookups; ++n)
                                      found &= OMResMgrGetIStreamInfo(ids[n % kIds], kType);
                              }) /
                              kLookups);
        require(found, "a resource was not found");
        OMResMgrStopUsing(kLibrary, true);
    }
    return times;
}

ReadTimes measureReads(int repetitions) {
    MediaMachine machine;
    const formats::Bytes library = makeLibrary();
    machine.put(kLibrary, std::as_bytes(std::span(library)));
    machine.put("plain.bin", std::as_bytes(std::span(library)).first(kResourceBytes));
    OMOpenLibrary::setKeepOpen(true);
    OMResMgrUseDLL16(kLibrary, true);
    ReadTimes times;
    times.bytes = kResourceBytes;
    for (int i = 0; i < repetitions; ++i) {
        times.disk.add(nanosecondsOfRead());
        times.plain.add(nanosecondsOfPlainRead(machine.hostPath("plain.bin").string()));
        require(OMCachedFile::cache(kLibrary) != nullptr, "the library cannot be cached");
        times.memory.add(nanosecondsOfRead());
        OMCachedFile::uncache(kLibrary);
    }
    OMOpenLibrary::setKeepOpen(false);
    return times;
}
