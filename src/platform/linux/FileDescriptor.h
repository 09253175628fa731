#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace varnel {

/// Owns an open file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor(descriptor) { }
    FileDescriptor(FileDescriptor &&other) noexcept
        : descriptor(std::exchange(other.descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(descriptor, other.descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }

    [[nodiscard]] int get() const { return descriptor; }
    /// Hands the descriptor over to somebody else who will close it.
    int release() { return std::exchange(descriptor, -1); }
    explicit operator bool() const { return descriptor >= 0; }

private:
    int descriptor = -1;
};

/// Repeats a system call that a signal interrupted.
template <typename Call> auto uninterrupted(const Call &call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace varnel
