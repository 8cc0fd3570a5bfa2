#include "omwindow.h"

#include "omdebug.h"

OMWindow::OMWindow(const platform::Rect& rectangle) : rectangle_(rectangle) {
    OMDebug::requireApp("OMWindow");
    OMWindowList::current()->all.append(this);
}

OMWindow::~OMWindow() {
    OMWindowList* list = OMWindowList::current();
    if (!list) return;
    list->all.remove(this);
    if (list->capture == this) list->capture = nullptr;
}
