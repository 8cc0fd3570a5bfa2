// The commands of zorbet-rsc on files of a folder.
#pragma once

#include "testfiles.h"

#include "manifest/pack.h"

#include <sstream>

namespace testfiles {

class ToolTest : public testing::Test {
  protected:
    /// Runs `command(out, errors)`; its exit code.
    template <class Command>
    int run(Command command) {
        std::ostringstream out;
        std::ostringstream errors;
        const int code = command(out, errors);
        out_ = out.str();
        errors_ = errors.str();
        return code;
    }
    int pack(const std::string& manifest, const std::string& to) {
        return run([&](auto&, auto& errors) {
            return rsc::runPack({folder_.at(manifest), folder_.at(to)}, errors);
        });
    }
    [[nodiscard]] std::vector<std::filesystem::path>
    paths(const std::vector<std::string>& names) const {
        std::vector<std::filesystem::path> all;
        for (const std::string& name : names) all.push_back(folder_.at(name));
        return all;
    }

    TestFolder folder_;
    std::string out_;
    std::string errors_;
};

} // namespace testfiles
