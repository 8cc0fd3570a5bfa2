#include "reports.h"

#include "omapp.h"
#include "omsexception.h"

namespace {

constexpr std::uint32_t kTaskModal = 0x2000; ///< style of a message box: OK, task-modal

} // namespace

void RWarn(std::string_view text) {
    OMSobExceptionWarning(text).report();
    if (OMApp* app = OMApp::getApp()) app->alert(text);
}

void RTell(std::string_view text) {
    OMSobExceptionMessage(text).report();
    if (OMApp* app = OMApp::getApp()) app->alert(text, kTaskModal);
}
