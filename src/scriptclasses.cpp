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

RScriptClasses::RScriptClasses() {
    OMSRegistry& registry = OMSRegistry::global();
    registerOMMultiTrinket(registry);
    registerRAnimation(registry);
    registerRAnimationTrigger(registry);
    registerRHotSpot(registry);
    registerRKbdInp(registry);
    registerRPButton(registry);
    registerRSelList(registry);
    registerRText(registry);
    registerRTrigger(registry);
    registerRWorldPort(registry);
    // A class that is not built in may come from a library in the current directory.
    registry.setComponentLoading(true);
}

RScriptClasses::~RScriptClasses() {
    OMSRegistry::global().setComponentLoading(false);
    OMSRegistry::global().unregisterAll();
}
