// Named properties of scriptable objects: data (read and written with `get` and `set`), methods
// (run with `play`) and events (to which `set` attaches a handler).
#pragma once

#include "omlink.h"

#include <optional>
#include <string>
#include <string_view>

using OMSSetter = OMLinkTo<void(std::string_view)>;
using OMSGetter = OMLinkTo<std::string()>;
using OMSMethod = OMLinkTo<void()>;

class OMScriptableObject;
struct OMSEntry;

class OMScriptableObjectProperty {
  public:
    enum class Kind { Data = 0, Event = 1, Method = 2 };

    /// `name` must outlive the property.
    OMScriptableObjectProperty(Kind kind, std::string_view name) : kind_(kind), name_(name) {}
    virtual ~OMScriptableObjectProperty() = default;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] std::string_view name() const { return name_; }

    // What a kind does not support fails.
    virtual bool set(std::string_view) { return false; }
    virtual std::optional<std::string> get() { return std::nullopt; }
    /// Invokes a method or fires an event. The property may be gone when this returns.
    virtual bool run() { return false; }
    /// Whether it is an event that has a handler.
    [[nodiscard]] virtual bool isHeard() const { return false; }
    /// Whether it is a method whose work may go on after the call.
    [[nodiscard]] virtual bool lasts() const { return kind_ == Kind::Method; }

  private:
    Kind kind_;
    std::string_view name_;
};

class OMSDataProperty : public OMScriptableObjectProperty {
  public:
    /// A property that is only read takes a setter that does nothing, so that writes are accepted.
    OMSDataProperty(std::string_view name, OMSSetter setter, OMSGetter getter)
        : OMScriptableObjectProperty(Kind::Data, name), setter_(std::move(setter)),
          getter_(std::move(getter)) {}
    bool set(std::string_view value) override;
    std::optional<std::string> get() override;

  private:
    OMSSetter setter_;
    OMSGetter getter_;
};

class OMSMethodProperty : public OMScriptableObjectProperty {
  public:
    OMSMethodProperty(std::string_view name, OMSMethod method)
        : OMScriptableObjectProperty(Kind::Method, name), method_(std::move(method)) {}
    bool run() override;

  private:
    OMSMethod method_;
};

class OMSEventProperty : public OMScriptableObjectProperty {
  public:
    explicit OMSEventProperty(std::string_view name)
        : OMScriptableObjectProperty(Kind::Event, name) {}
    /// Replaces both handlers; empty links remove them.
    void attach(OMLink handler, OMLink second);
    /// Calls the handlers, or, inside a call that a script made into an object, shows that the
    /// event was ignored. False without a handler.
    bool run() override;
    [[nodiscard]] bool isHeard() const override { return handler_ || second_; }

  private:
    OMLink handler_;
    OMLink second_;
};

/// A row of a class's table, for one object. An event of it has no handlers.
class OMSEntryProperty : public OMScriptableObjectProperty {
  public:
    /// Both must outlive the property.
    OMSEntryProperty(OMScriptableObject& object, const OMSEntry& row);
    bool set(std::string_view value) override;
    std::optional<std::string> get() override;
    bool run() override;
    [[nodiscard]] bool lasts() const override;

  private:
    OMScriptableObject& object_;
    const OMSEntry& row_;
};
