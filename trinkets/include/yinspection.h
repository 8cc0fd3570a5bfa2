// Answers what the author asks of the running scripts, and carries out lines that they type, for as
// long as it lives.
#pragma once

#include "platform/authordesk.h"

class YInspection final : public platform::Inspection {
  public:
    /// Goes to the author's desk.
    YInspection();
    ~YInspection() override;
    YInspection& operator=(YInspection&&) = delete;

    [[nodiscard]] std::optional<std::string> value(std::string_view variable) const override;
    [[nodiscard]] std::optional<std::string> property(std::string_view variable,
                                                      std::string_view name) const override;
    [[nodiscard]] std::vector<platform::InspectedVariable> variables() const override;
    [[nodiscard]] std::vector<platform::InspectedProperty>
    properties(std::string_view variable) const override;
    std::string run(std::string_view line) override;
};
