// The program's own server, for a computer whose installation names none.
#pragma once

#include <memory>

#include "core/installation.h"

namespace marovane {

struct Machine;
class PipedProcess;

/// Keeps the server running; it ends with this object, and with the program.
using EmbeddedServer = std::unique_ptr<PipedProcess>;

/// When the installation names no server, starts one on loopback, with its data in the working data, and
/// makes it every root. The server makes sure of an account, which is in the registry mirror; the first
/// start also writes a first `setup.set` that keeps its password. Throws RunTimeError with the reason when
/// the server does not come up.
EmbeddedServer StartEmbeddedServer(Machine& machine, InstallationValues& installation);

}  // namespace marovane
