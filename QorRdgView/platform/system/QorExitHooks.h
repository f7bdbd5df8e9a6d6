#pragma once

#include <functional>

/// Has \p iCallback called once when the program ends: when it calls QorRunExitHooks, else by exit.
/// Hooks run by rising priority, those of one priority in the reverse order of their registration.
/// A hook may register others; they run too. Thread-safe.
void QorCallOnExit(std::function<void()> iCallback, int iPriority = 0);

/// Runs the hooks that are registered and forgets them. Programs call it at the end of main, while
/// everything is still whole; tests at the end of a test.
void QorRunExitHooks();
