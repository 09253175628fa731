#include "platform/linux/SystemError.h"

#include <cerrno>

namespace varnel {

namespace {

ErrorCode codeOf(int error)
{
    switch (error) {
    case ENOENT:
        return ErrorCode::NotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EXDEV:
        return ErrorCode::NotPermitted;
    case EISDIR:
        return ErrorCode::NotAFile;
    default:
        return ErrorCode::Failed;
    }
}

} // namespace

Error systemError(const QString &path, int error)
{
    if (error == EXDEV)
        return {codeOf(error), path + u": A link on its way leads out of the home folder"};
    return {codeOf(error), path + u": " + qt_error_string(error)};
}

Error fileError(const QString &path, int error)
{
    switch (error) {
    case EISDIR:
        return {ErrorCode::NotAFile, path + u": Not a regular file"};
    case EAGAIN:
        return {ErrorCode::Failed, path + u": Another program is changing the file"};
    default:
        return systemError(path, error);
    }
}

} // namespace varnel
