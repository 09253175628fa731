#include <QtGlobal>

// Called by the fuzzer before its first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Log lines are put together as always, and thrown away: there are too many to keep.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}
