#pragma once

#include <atomic>

/// What a program on a terminal needs of the system.
namespace welvane {

enum class Stream { Input, Output, Error };

/// True when the stream is a terminal.
bool isTerminal(Stream stream);
/// Columns of the terminal behind stderr; 80 when unknown.
int terminalWidth();

/// From now on an interrupt (Ctrl-C), a request to end or a hang-up sets the flag in place of ending the process; the
/// second one ends it at once. Writing behind a limit of size or into a closed pipe becomes an error of the write.
/// `flag` must outlive the process' use of signals; nullptr gives the signals back to the system.
void cancelOnInterrupt(std::atomic<bool>* flag);
/// True once such a signal has come: the flag may have been set by others too.
bool wasInterrupted();

}  // namespace welvane
