#include "platform/host/machine/termination.h"

#include <csignal>
#include <initializer_list>

namespace platform {

namespace {

volatile std::sig_atomic_t requested = 0;

void request(int) { requested = 1; }

} // namespace

void catchTermination() {
    struct sigaction action {};
    action.sa_handler = request;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

bool terminationRequested() { return requested != 0; }

} // namespace platform
