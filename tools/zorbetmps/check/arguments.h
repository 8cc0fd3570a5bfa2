// The forms in which classes, methods and commands take their arguments, as their tables write
// them: "id [z] | id x y z". A "|" parts forms, brackets hold what may be missing, "..." repeats
// what stands before it, "parameters" is any number of words. What stands in "(...)" is a remark.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mps {

class ArgumentForms {
  public:
    /// The text must outlive the forms. Without a text there is one form without arguments.
    explicit ArgumentForms(std::string_view text);

    [[nodiscard]] bool takes(std::size_t count) const;
    /// What an argument is called, from 0, in each of the forms that take so many.
    [[nodiscard]] std::vector<std::string_view> names(std::size_t count,
                                                      std::size_t argument) const;
    /// The same of forms that these arguments may be meant for: "-1" and "\"\"" in a form are
    /// arguments as they are to be written.
    [[nodiscard]] std::vector<std::string_view> namesOf(std::span<const std::string_view> given,
                                                        std::size_t argument) const;

  private:
    struct Form {
        std::vector<std::string_view> names;
        std::size_t repeated = 0; ///< so many of the last names, any number of times

        [[nodiscard]] bool takes(std::size_t count) const;
        [[nodiscard]] std::string_view name(std::size_t argument) const;
    };
    std::vector<Form> forms_; ///< without anything that may be missing
};

} // namespace mps
