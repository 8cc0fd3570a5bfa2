#include "omwindow.h"

#include "omapp.h"
#include "omdebug.h"

OMWindow::OMWindow(const platform::Rect& rectangle) : rectangle_(rectangle) {
    OMDebug::requireApp("OMWindow");
    OMApp::getApp()->windows_.append(this);
}

OMWindow::~OMWindow() {
    OMApp* app = OMApp::getApp();
    if (!app) return;
    app->windows_.remove(this);
    if (app->capture_ == this) app->capture_ = nullptr;
}
