// Diagnostics of the embedded host.
#include "elugraph/host/kernel.h"

// Debuggers stop on SIGTRAP; without one the signal would end the process, so it is not raised.
void int3call() {}
