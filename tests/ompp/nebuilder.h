// Resource libraries for tests, out of any bytes.
#pragma once

#include "formats/library/writer.h"
#include "memoryfiles.h"

namespace testing_support {

class NEBuilder {
  public:
    NEBuilder& add(std::string_view type, int id, const Bytes& data) {
        return add(type, id, toText(data));
    }
    NEBuilder& add(std::string_view type, int id, std::string_view text) {
        resources_.push_back({std::string(type), static_cast<std::uint16_t>(id),
                              formats::Bytes(text.begin(), text.end())});
        return *this;
    }
    [[nodiscard]] Bytes build() const {
        const auto file = formats::library::write("TEST", resources_).value;
        return toBytes({reinterpret_cast<const char*>(file.data()), file.size()});
    }

  private:
    std::vector<formats::library::Resource> resources_;
};

} // namespace testing_support
