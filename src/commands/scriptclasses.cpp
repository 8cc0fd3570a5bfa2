#include "commands/scriptclasses.h"

#include "commands/vocabulary.h"
#include "omsregistry.h"

RScriptClasses::RScriptClasses() {
    OMSRegistry& registry = OMSRegistry::global();
    for (const OMSClass* scriptClass : RGameClasses()) registry.registerClass(*scriptClass);
    // A class that is not built in may come from a library in the current directory.
    registry.setComponentLoading(true);
}

RScriptClasses::~RScriptClasses() {
    OMSRegistry::global().setComponentLoading(false);
    OMSRegistry::global().unregisterAll();
}
