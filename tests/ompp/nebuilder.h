// Resource libraries for tests, out of any bytes.
#pragma once

#include "formats/library/writer.h"
#include "memoryfiles.h"

namespace testing_support {

class NEBuilder {
  public:
    NEBuilder& add(std::string_view type, int id, formats::ByteSpan data) {
        resources_.push_back({std::string(type), static_cast<std::uint16_t>(id),
                              formats::Bytes(data.begin(), data.end())});
        return *this;
    }
    NEBuilder& add(std::string_view type, int id, const Bytes& data) {
        return add(type, id, formats::asNumbers(data));
    }
    NEBuilder& add(std::string_view type, int id, std::string_view text) {
        return add(type, id, toBytes(text));
    }
    [[nodiscard]] Bytes build() const {
        return toBytes(formats::library::write("TEST", resources_).value);
    }

  private:
    std::vector<formats::library::Resource> resources_;
};

} // namespace testing_support
