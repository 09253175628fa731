#pragma once

#include "base/HomeFolder.h"

#include <QString>

#include <functional>

namespace varnel {

class CommandRunner;
class Dialogs;
class FinderInfo;
class FolderMaker;
class PreferenceFiles;
class SharedObject;

/// What the pages are given by the program that makes them. Everything named here outlives them.
struct PageContext {
    HomeFolder home;
    SharedObject &shared;
    PreferenceFiles &files;
    FinderInfo &finderInfo;
    FolderMaker &folders;
    CommandRunner &runner;
    Dialogs &dialogs;
    /// Whether the interface description of that name ("GeneralView") loads. Compiled-in
    /// descriptions always do; a page asks all the same, because a page that fails must leave the
    /// others standing.
    std::function<bool(const QString &interfaceName)> interfaceLoads = [](const QString &) {
        return true;
    };
};

} // namespace varnel
