#pragma once

#include "base/Result.h"

#include <QByteArrayView>

/// The process's standard streams, as a program that saves needs them.
namespace varnel::LinuxTerminal {

/// Before anything else is done. Keeps a reader that goes away and a limit on file sizes from
/// ending the process in the middle of a save: writes fail instead. Keeps the three standard
/// numbers from being given to the files and connections that the program opens: one that is closed
/// becomes a stream on which every write fails.
void prepareStreams();

/// In a child, before it runs a program: what prepareStreams() has the process take no notice of
/// ends programs again. Calls nothing that a copy of a process with several threads must not call.
void streamsAsUsual();

[[nodiscard]] bool isTerminal(int descriptor);

/// Columns of the terminal; 0 when the descriptor is none, or it doesn't say.
[[nodiscard]] int columns(int descriptor);

/// All the bytes, or why not. NotFound: the reader has gone.
[[nodiscard]] Result<void> writeAll(int descriptor, QByteArrayView bytes);

} // namespace varnel::LinuxTerminal
