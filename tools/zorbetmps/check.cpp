#include "zorbetmps/check.h"

#include "formats/base/latin1.h"
#include "zorbetmps/includes.h"

#include "ycompiler.h"
#include "yheap.h"
#include "ykeyword.h"
#include "yprecompiled.h"

#include <algorithm>
#include <map>
#include <ostream>

namespace mps {

namespace {

std::string tooLong(std::size_t limit) {
    return "Script too long: at most " + std::to_string(limit) +
           " bytes are allowed; move a part of it into a script of its own";
}

/// The script's own name while it is compiled; no include can be called so.
constexpr const char* kOwnName = "";

/// One line of a text of the script, as it can be shown anywhere.
std::string shown(std::string_view text) {
    std::string line(text.substr(0, text.find_first_of("\r\n")));
    const auto isControl = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
    };
    std::ranges::replace_if(line, isControl, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return formats::utf8FromLatin1(line);
}

class Check {
  public:
    Check(const std::string& file, std::ostream& out) : file_(file), out_(out), includes_(file) {}

    bool run() {
        std::string why;
        auto bytes = readHostFile(file_, kYMaxPrecompiledSize, why);
        if (!bytes) {
            tell(why);
        } else if (YIsPrecompiled(*bytes)) {
            checkPrecompiled(*bytes);
        } else if (bytes->size() > YCompiler::kMaxTextSize) {
            tell(tooLong(YCompiler::kMaxTextSize));
        } else {
            checkText(*std::move(bytes));
        }
        return sound_;
    }

  private:
    void checkText(std::string text) {
        const auto reader = [this](const std::string& name) { return readInclude(name); };
        YCompiler compiler(YHeap::current(), reader, YCompiler::OnError::Collect);
        static_cast<void>(compiler.compile(kOwnName, std::move(text)));
        for (const YCompileError& error : compiler.errors()) {
            sound_ = false;
            out_ << pathOf(error.file) << ':' << error.line << ": " << shown(error.description())
                 << '\n';
        }
    }

    YCompiler::Source readInclude(const std::string& name) {
        const auto path = includes_.find(name);
        if (!path) return {std::nullopt, "can't find " + name};
        includedFrom_[name] = *path;
        std::string why;
        auto text = readHostFile(*path, YCompiler::kMaxTextSize, why);
        if (!text) return {std::nullopt, name + ": " + why};
        if (text->size() > YCompiler::kMaxTextSize)
            return {std::nullopt, name + ": " + tooLong(YCompiler::kMaxTextSize)};
        return {std::move(text), {}};
    }

    [[nodiscard]] const std::string& pathOf(const std::string& name) const {
        const auto included = includedFrom_.find(name);
        return included == includedFrom_.end() ? file_ : included->second;
    }

    void checkPrecompiled(std::string_view bytes) {
        if (bytes.size() > kYMaxPrecompiledSize) {
            tell(tooLong(kYMaxPrecompiledSize));
            return;
        }
        YHeap& heap = YHeap::current();
        const auto script = YReadPrecompiled(heap, bytes);
        if (!script) {
            tell("damaged precompiled script");
            return;
        }
        for (const YInstruction& instruction : script->instructions) {
            if (instruction.opcode != YOpcode::Command) continue;
            const auto word = static_cast<std::size_t>(instruction.operand);
            const std::string& command = heap.get(script->operands[word]).text();
            if (!YCommands::find(command)) tell(command + " is undefined");
        }
    }

    void tell(std::string_view text) {
        sound_ = false;
        out_ << file_ << ": " << shown(text) << '\n';
    }

    const std::string& file_;
    std::ostream& out_;
    Includes includes_;
    std::map<std::string, std::string, std::less<>> includedFrom_; ///< paths by include names
    bool sound_ = true;
};

} // namespace

bool checkScript(const std::string& file, std::ostream& out) {
    YHeap::recreate();
    const bool sound = Check(file, out).run();
    YHeap::recreate();
    return sound;
}

} // namespace mps
