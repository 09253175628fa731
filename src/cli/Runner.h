#pragma once

namespace varnel::cli {

/// The whole of varnelctl: parses, runs one command, gives the exit status.
int run(int argc, char **argv);

} // namespace varnel::cli
