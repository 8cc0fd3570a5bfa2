#include "scriptclasses.h"

#include "ommultitrinket.h"
#include "omsregistry.h"
#include "ranimation.h"
#include "ranimationtrigger.h"
#include "rhotspot.h"
#include "rkbdinp.h"
#include "rpbutton.h"
#include "rsellist.h"
#include "rtext.h"
#include "rtrigger.h"
#include "world/rworldport.h"

namespace {

constexpr const OMSClass* kClasses[] = {
    &OMMultiTrinket::kClass, &RAnimation::kClass, &RAnimationTrigger::kClass, &RHotSpot::kClass,
    &RKbdInp::kClass,        &RPButton::kClass,   &RSelList::kClass,          &RText::kClass,
    &RTrigger::kClass,       &RWorldPort::kClass,
};

} // namespace

RScriptClasses::RScriptClasses() {
    OMSRegistry& registry = OMSRegistry::global();
    for (const OMSClass* scriptClass : kClasses) registry.registerClass(*scriptClass);
    // A class that is not built in may come from a library in the current directory.
    registry.setComponentLoading(true);
}

RScriptClasses::~RScriptClasses() {
    OMSRegistry::global().setComponentLoading(false);
    OMSRegistry::global().unregisterAll();
}
