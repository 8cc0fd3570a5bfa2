#include "omsclass.h"

const OMSEntry* OMSClass::find(std::string_view entry) const {
    for (const OMSClass* from = this; from; from = from->base)
        for (const OMSEntry& row : from->vocabulary)
            if (row.name == entry) return &row;
    return nullptr;
}
