// Lua: every variable is global, the counters too, as they are in the engine's scripts.
#include "scriptlanguage.h"

#include <lua.hpp>

#include <stdexcept>

namespace {

class LuaLanguage final : public ScriptLanguage {
  public:
    [[nodiscard]] std::string_view name() const override { return "Lua"; }

    void load(const LoopSource& source) override {
        state_.reset(luaL_newstate());
        luaL_openlibs(state_.get());
        push(std::string(source.setUp));
        call(0);
        const std::string rounds = std::to_string(kLoopRounds);
        push("for kk = 1, " + rounds +
             " do k = kk\n"
             "for ii = 1, " +
             rounds + " do i = ii\n" + std::string(source.body) + "\nend\nend");
    }
    /// Once after each `load`.
    void run() override { call(0); }
    [[nodiscard]] std::string value(std::string_view variable) override {
        push("return string.format(math.type(" + std::string(variable) +
             ") == 'float' and '%.15g' or '%s', " + std::string(variable) + ")");
        call(1);
        std::string text = lua_tostring(state_.get(), -1);
        lua_pop(state_.get(), 1);
        return text;
    }

  private:
    struct Close {
        void operator()(lua_State* state) const { lua_close(state); }
    };

    void push(const std::string& chunk) { check(luaL_loadstring(state_.get(), chunk.c_str())); }
    void call(int results) { check(lua_pcall(state_.get(), 0, results, 0)); }
    void check(int status) {
        if (status == LUA_OK) return;
        throw std::runtime_error(std::string("Lua: ") + lua_tostring(state_.get(), -1));
    }

    std::unique_ptr<lua_State, Close> state_;
};

} // namespace

std::unique_ptr<ScriptLanguage> makeLuaLanguage() { return std::make_unique<LuaLanguage>(); }
