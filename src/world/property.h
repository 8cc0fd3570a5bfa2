// Named values of the world that scripts read and write as texts.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace world {

/// A whole number of this name tells the log of each time that it is read or written.
inline constexpr std::string_view kWatchedName = "CStatueDataset";

class Property {
  public:
    virtual ~Property() = default;
    Property& operator=(const Property&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    /// Whether it goes into the data file.
    [[nodiscard]] bool isPersistent() const { return persistent_; }

    /// With its value.
    [[nodiscard]] virtual std::unique_ptr<Property> clone() const = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    virtual void setText(std::string_view text) = 0;

  protected:
    Property(std::string_view name, bool persistent) : name_(name), persistent_(persistent) {}
    Property(const Property&) = default;

  private:
    std::string name_;
    bool persistent_;
};

/// A whole number, at first 0.
class IntProperty final : public Property {
  public:
    explicit IntProperty(std::string_view name, bool persistent = true)
        : Property(name, persistent) {}

    [[nodiscard]] std::unique_ptr<Property> clone() const override;
    [[nodiscard]] std::string text() const override;
    /// Leading digits; 0 without any.
    void setText(std::string_view text) override;

  private:
    std::int32_t value_ = 0;
};

/// A text, at first empty.
class StringProperty final : public Property {
  public:
    explicit StringProperty(std::string_view name, bool persistent = true)
        : Property(name, persistent) {}

    [[nodiscard]] const std::string& value() const { return value_; }

    [[nodiscard]] std::unique_ptr<Property> clone() const override;
    [[nodiscard]] std::string text() const override { return value_; }
    void setText(std::string_view text) override { value_ = text; }

  private:
    std::string value_;
};

} // namespace world
