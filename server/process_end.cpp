#include "server/process_end.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "base/file_descriptor.h"

namespace server {
namespace {

sigset_t EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  return signals;
}

bool InputHasEnded() {
  std::array<char, 256> ignored;
  const ssize_t length = read(STDIN_FILENO, ignored.data(), ignored.size());
  return length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN);
}

}  // namespace

void HoldEndSignals() {
  const sigset_t signals = EndSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void EndWithParent() { prctl(PR_SET_PDEATHSIG, SIGTERM); }

void WaitForEnd(bool watchInput) {
  const sigset_t signals = EndSignals();
  const base::FileDescriptor held(signalfd(-1, &signals, SFD_CLOEXEC));
  std::array<pollfd, 2> sources = {{{held.Get(), POLLIN, 0}, {watchInput ? STDIN_FILENO : -1, POLLIN, 0}}};
  while (true) {
    if (poll(sources.data(), sources.size(), -1) < 0) continue;
    if (sources[0].revents != 0) break;
    if (sources[1].revents != 0 && InputHasEnded()) break;
  }
}

}  // namespace server
