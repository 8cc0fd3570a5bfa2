// Reports of script-level mistakes: values that carry a text and a kind. The newest one is kept,
// and whoever installed the notification link (the log) is told of each.
#pragma once

#include "omlink.h"

#include <optional>
#include <string>
#include <string_view>

class OMSobException {
  public:
    /// What becomes of the report.
    static constexpr std::string_view kError = "error";
    static constexpr std::string_view kMessage = "message";
    static constexpr std::string_view kWarning = "warning";

    explicit OMSobException(std::string_view text) : OMSobException(text, kError) {}

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] std::string_view kind() const { return kind_; }

    /// Makes this the current error object and tells the listener.
    void report() const;

    [[nodiscard]] static const std::optional<OMSobException>& current();
    static void clearCurrent();
    /// Replaces the listener.
    static void setNotification(OMLinkTo<void(const OMSobException&)> link);

  protected:
    OMSobException(std::string_view text, std::string_view kind) : text_(text), kind_(kind) {}

  private:
    std::string text_;
    std::string_view kind_;
};

class OMSobExceptionMessage : public OMSobException {
  public:
    explicit OMSobExceptionMessage(std::string_view text) : OMSobException(text, kMessage) {}
};

class OMSobExceptionWarning : public OMSobException {
  public:
    explicit OMSobExceptionWarning(std::string_view text) : OMSobException(text, kWarning) {}
};
