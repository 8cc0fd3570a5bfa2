#include "omsbirths.h"

#include "omsclass.h"
#include "omscrptb.h"

#include <utility>
#include <vector>

namespace {

struct Birth {
    OMSWatch object;
    const OMSClass* scriptClass;
};

std::vector<Birth>& waiting() {
    static std::vector<Birth> births;
    return births;
}

} // namespace

OMSBirths::~OMSBirths() {
    if (--depth_ > 0) return;
    for (const Birth& birth : std::exchange(waiting(), {}))
        if (birth.object) birth.object.object()->announceBorn(birth.scriptClass->name);
}

void OMSBirths::add(OMScriptableObject& object, const OMSClass& scriptClass) {
    object.leaveToProgram();
    waiting().push_back({OMSWatch(&object), &scriptClass});
}
