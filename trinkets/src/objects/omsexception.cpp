#include "omsexception.h"

namespace {

struct State {
    std::optional<OMSobException> current;
    OMLinkTo<void(const OMSobException&)> notification;
};

State& state() {
    static State theState;
    return theState;
}

} // namespace

void OMSobException::report() const {
    state().current = *this;
    state().notification(*this);
}

const std::optional<OMSobException>& OMSobException::current() { return state().current; }

void OMSobException::clearCurrent() { state().current.reset(); }

void OMSobException::setNotification(OMLinkTo<void(const OMSobException&)> link) {
    state().notification = std::move(link);
}
