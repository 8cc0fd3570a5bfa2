// The check of one script by itself, with all that it includes.
#pragma once

#include "zorbetmps/check/finding.h"
#include "zorbetmps/check/includes.h"
#include "zorbetmps/check/resources.h"
#include "zorbetmps/check/silences.h"
#include "zorbetmps/check/vocabulary.h"

#include "ycompiler.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mps {

inline constexpr std::string_view kScriptExtension = ".mps";

/// Absolute, without links.
[[nodiscard]] std::string realPath(const std::string& path);
/// Whether the game would tell it as well, when it reads the script.
[[nodiscard]] bool isOfCompiler(const Finding& finding);

class ScriptCheck {
  public:
    /// `file` is a host path; it, the words and the resources must outlive the check.
    ScriptCheck(const std::string& file, const Vocabulary& vocabulary,
                const GameResources& resources)
        : file_(file), vocabulary_(vocabulary), resources_(resources), includes_(file) {}

    /// The heap is new afterwards.
    void run();

    /// Is shown what the game would run, and its heap, which are gone afterwards; only what was
    /// text has lines.
    using Look = std::function<void(const YScript&, YHeap&)>;
    /// The same without the rules, of these bytes as if they were the file's.
    void compile(const std::string& bytes, const Look& look);
    /// The file's bytes; none, which is a finding, when it cannot be read.
    [[nodiscard]] std::optional<std::string> read();

    /// In the order in which they were found; without those that comments silence.
    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }
    /// Real paths of all that was read, its own too.
    [[nodiscard]] const std::set<std::string>& files() const { return files_; }
    /// Real paths of scripts that its words name.
    [[nodiscard]] const std::set<std::string>& mentions() const { return mentions_; }
    /// The host path of a file by its name in YScript::files.
    [[nodiscard]] const std::string& pathOf(const std::string& name) const;

  private:
    void checkText(std::string bytes, const Look& look);
    void checkScript(const YScript& script, YHeap& heap);
    void checkPrecompiled(std::string_view bytes, const Look& look);
    std::optional<std::string> lookAt(const std::string& file, std::string bytes);
    YCompiler::Source readInclude(const std::string& name, const std::string& includer, int line);
    [[nodiscard]] std::string otherSpelling(std::string_view name) const;
    void mention(const YVariable& word);
    void tell(Rule rule, const std::string& text) { add({rule, file_, 0, 0, text}); }
    void add(Finding finding);

    const std::string& file_;
    const Vocabulary& vocabulary_;
    const GameResources& resources_;
    Includes includes_;
    std::vector<Finding> findings_;
    std::set<std::string> files_;
    std::set<std::string> mentions_;
    std::map<std::string, std::string, std::less<>> shownPaths_; ///< by include names
    std::map<std::string, Silences, std::less<>> silences_;      ///< by shown paths
};

} // namespace mps
