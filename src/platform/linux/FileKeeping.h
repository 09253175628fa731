#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

#include <variant>

namespace varnel {

struct FileContent;
struct Place;

enum class KeptAs { Link, Copy };

/// Gives a file that was read at a place a further name in a folder, or, where that can't be, puts
/// a copy there: what was done, or an errno value, and then there is nothing of that name. EEXIST
/// when something is, EFBIG for a file that is too big to be copied, EAGAIN when another program
/// replaced it meanwhile. The folder is not flushed.
[[nodiscard]] std::variant<KeptAs, int> keepFile(const Place &place, const FileContent &content,
                                                 const FileDescriptor &folder,
                                                 const QByteArray &name);

/// A kept file, and by what name it can be moved.
struct KeptFile {
    const FileDescriptor &folder;
    QByteArray name;
    const FileContent &content;
};

/// Moves a kept file to a place, where the file `now` was read (null: there was nothing), which
/// gives way: 0, or an errno value, and then what stood there stands (but for somebody who
/// exchanges the kept file in the very moment in which it is moved). EACCES when its mode keeps the
/// user from writing to it, EAGAIN when another program changed it, or the kept one, meanwhile.
/// Owner, group, mode and extended attributes that differ become those of `now`. The folders are
/// yet to be flushed.
[[nodiscard]] int putKeptFile(const KeptFile &kept, const Place &place, const FileContent *now);

} // namespace varnel
