// A component library for the script test "component": one class with one property.
#include "omsclass.h"
#include "omsregistry.h"

namespace {

class RTestComponent : public OMScriptableObject {
  public:
    static const OMSClass kClass;

    explicit RTestComponent(int level) : level_(level) {}
    [[nodiscard]] int level() const { return level_; }
    void setLevel(int level) { level_ = level; }

  private:
    static std::unique_ptr<OMScriptableObject> createFromScript() {
        return std::make_unique<RTestComponent>(OMSArguments::global().nextInteger());
    }

    int level_;
};

constexpr OMSEntry kVocabulary[] = {
    oms::data<&RTestComponent::level, &RTestComponent::setLevel>("level", "any number"),
};

const OMSClass RTestComponent::kClass{"RTestComponent", &OMScriptableObject::kClass, kVocabulary,
                                      &RTestComponent::createFromScript};

} // namespace

extern "C" void OMRegisterComponent() {
    OMSRegistry::global().registerClass(RTestComponent::kClass);
}
