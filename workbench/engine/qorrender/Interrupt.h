#pragma once

namespace qor::render {

/// From now on Ctrl-C, SIGTERM and SIGHUP only set a flag, and a closed pipe is an error of the
/// write.
void watchInterrupts();

bool isInterrupted();

/// Throws Interrupted when the flag is set.
void checkInterrupt();

} // namespace qor::render
