#include "cli/Outcome.h"

namespace varnel::cli {

ExitStatus failure(const Error &error)
{
    Console::message(error.text);
    return error.code == ErrorCode::Invalid ? ExitStatus::Usage : ExitStatus::Failed;
}

} // namespace varnel::cli
