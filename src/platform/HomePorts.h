#pragma once

namespace varnel {

class CommandRunner;
class FileReader;
class FileStore;
class FinderInfo;
class FolderMaker;
class KeptFolders;
class SessionLoginItems;
class StandardFolders;

/// What the host offers for the work on one home.
struct HomePorts {
    FileStore &files;
    FinderInfo &finderInfo;
    FolderMaker &folders;
    KeptFolders &keptFolders;
    StandardFolders &standardFolders;
    SessionLoginItems &loginItems;
    FileReader &applications; ///< reads what stands outside of the home: icons, bundles
    CommandRunner &runner;
};

} // namespace varnel
