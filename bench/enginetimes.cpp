#include "enginetimes.h"

#include "scriptmachine.h"

#include "omsclass.h"
#include "omsregistry.h"
#include "ycompiler.h"
#include "yheap.h"

#include <stdexcept>

namespace {

constexpr int kEvents = 100'000; ///< in one measurement
constexpr std::string_view kEvent = "lit";

class Lamp final : public OMScriptableObject {
  public:
    static const OMSClass kClass;
};

constexpr OMSEntry kVocabulary[] = {
    oms::event(kEvent),
};

const OMSClass Lamp::kClass{"Lamp", &OMScriptableObject::kClass, kVocabulary, &oms::create<Lamp>};

} // namespace

CompileTimes measureCompiling(int repetitions) {
    CompileTimes times{.script = makeSampleScript(), .nanoseconds = {}};
    const ScriptMachine machine;
    registerSampleCommands();
    for (int i = 0; i < repetitions; ++i) {
        YHeap::recreate();
        YCompiler compiler(YHeap::current(), nullptr);
        std::string text = times.script.text;
        std::unique_ptr<YScript> compiled;
        times.nanoseconds.add(
            cpuNanoseconds([&] { compiled = compiler.compile("sample", std::move(text)); }));
        if (!compiler.errors().empty())
            throw std::runtime_error("sample script: " + compiler.errors().front().description());
        times.instructions = compiled->instructions.size();
    }
    return times;
}

Samples measureEvents(int repetitions) {
    Samples samples;
    ScriptMachine machine;
    OMSRegistry::global().registerClass(Lamp::kClass);
    machine.load("yield off\nn=0\nlamp=Lamp 1\nset lamp lit onLit\nwait\n"
                 "procedure onLit\n[\nn=(n+1)%1000\nlast=n\n]\n");
    machine.runUntilBlocked();
    OMScriptableObject* lamp = OMScriptableObject::named("lamp");
    if (!lamp) throw std::runtime_error("there is no lamp");
    for (int i = 0; i < repetitions; ++i)
        samples.add(cpuNanoseconds([lamp] {
                        for (int event = 0; event < kEvents; ++event) lamp->fireEvent(kEvent);
                    }) /
                    kEvents);
    if (machine.value("last") != std::to_string(repetitions * kEvents % 1000))
        throw std::runtime_error("events were lost");
    return samples;
}
