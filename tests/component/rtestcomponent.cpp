// A component library for the script test "component": one class with one property.
#include "omsclass.h"
#include "omsregistry.h"

namespace {

class RTestComponent : public OMScriptableObject {
  public:
    explicit RTestComponent(int level) : level_(level) {}
    [[nodiscard]] int level() const { return level_; }
    void setLevel(int level) { level_ = level; }
    void declareProperties() override;

  private:
    int level_;
};

constexpr OMSEntry kVocabulary[] = {
    oms::data<&RTestComponent::level, &RTestComponent::setLevel>("level", "any number"),
};

void RTestComponent::declareProperties() { declare(kVocabulary); }

} // namespace

extern "C" void OMRegisterComponent() {
    OMSRegistry::global().registerClass("RTestComponent", [] {
        return std::make_unique<RTestComponent>(OMSArguments::global().nextInteger());
    });
}
