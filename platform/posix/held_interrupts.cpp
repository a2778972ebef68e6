// A blocked signal is pending until it is unblocked. A thread inherits what its maker has blocked.

#include "../held_interrupts.h"

#include <csignal>
#include <initializer_list>

namespace qev::platform {
namespace {

void Mask(int how) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
    pthread_sigmask(how, &signals, nullptr);
}

} // namespace

HeldInterrupts::HeldInterrupts() {
    Mask(SIG_BLOCK);
}

HeldInterrupts::~HeldInterrupts() {
    Mask(SIG_UNBLOCK);
}

} // namespace qev::platform
