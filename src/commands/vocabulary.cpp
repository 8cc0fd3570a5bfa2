#include "commands/vocabulary.h"

#include "actions/rcompositeaction.h"
#include "actions/rqueue.h"
#include "actions/rrandomaction.h"
#include "activities/rmap.h"
#include "activities/rpeggame.h"
#include "activities/rpentgme.h"
#include "backpack/rbackpck.h"
#include "character/rcharctr.h"
#include "dialog/rdialog.h"
#include "movie/rsmackermovie.h"
#include "ommultitrinket.h"
#include "omsregistry.h"
#include "progress/rlaptrap.h"
#include "puzzles/labelledanswer.h"
#include "puzzles/racont.h"
#include "puzzles/ranswer.h"
#include "puzzles/rfabriccontainer.h"
#include "puzzles/rhcont.h"
#include "puzzles/rpuzzle.h"
#include "puzzles/rscont.h"
#include "ranimation.h"
#include "ranimationtrigger.h"
#include "rhotspot.h"
#include "rkbdinp.h"
#include "rpbutton.h"
#include "rsellist.h"
#include "rtext.h"
#include "rtrigger.h"
#include "scene/rscenprt.h"
#include "world/rworldport.h"

namespace {

constexpr const OMSClass* kClasses[] = {
    &OMAnimation::kClass, // made by the program alone
    &OMMultiTrinket::kClass,
    &RAnimation::kClass,
    &RAnimationTrigger::kClass,
    &RAttributeContainer::kClass,
    &RBackPack::kClass,
    &RCharacter::kClass,
    &RCompositeAction::kClass,
    &RDialog::kClass,
    &RDoubleGraphicTextAnswer::kClass,
    &RFabricContainer::kClass,
    &RGraphicAnswer::kClass,
    &RGraphicTextAnswer::kClass,
    &RHorizontalContainer::kClass,
    &RHorizontalValueContainer::kClass,
    &RHotSpot::kClass,
    &RKbdInp::kClass,
    &RLapTrap::kClass,
    &RMap::kClass,
    &RPButton::kClass,
    &RPegGame::kClass,
    &RPentominoGame::kClass,
    &RPuzzle::kClass,
    &RQueue::kClass,
    &RRandomAction::kClass,
    &RScenePort::kClass,
    &RSelList::kClass,
    &RSmackerMovie::kClass,
    &RStackingContainer::kClass,
    &RText::kClass,
    &RTrigger::kClass,
    &RValueContainer::kClass,
    &RWorldPort::kClass,
};

} // namespace

std::span<const OMSClass* const> RGameClasses() { return kClasses; }

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
