#include "scriptclasses.h"

#include "ommultitrinket.h"
#include "omsregistry.h"
#include "ranimation.h"

RScriptClasses::RScriptClasses() {
    OMSRegistry& registry = OMSRegistry::global();
    registerOMMultiTrinket(registry);
    registerRAnimation(registry);
    // A class that is not built in may come from a library in the current directory.
    registry.setComponentLoading(true);
}

RScriptClasses::~RScriptClasses() {
    OMSRegistry::global().setComponentLoading(false);
    OMSRegistry::global().unregisterAll();
}
