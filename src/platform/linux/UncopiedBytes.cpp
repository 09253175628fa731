#include "platform/linux/UncopiedBytes.h"

#include <algorithm>
#include <cstring>
#include <new>

#include <sys/mman.h>

namespace varnel {

UncopiedBytes::~UncopiedBytes()
{
    if (data)
        ::munmap(data, size_t(room));
}

void UncopiedBytes::append(const QByteArray &more)
{
    if (more.isEmpty())
        return;
    makeRoom(more.size());
    std::memcpy(data + size, more.constData(), size_t(more.size()));
    size += more.size();
}

void UncopiedBytes::makeRoom(qsizetype more)
{
    if (more <= room - size)
        return;
    constexpr qsizetype least = qsizetype(1) << 20; // and so whole pages
    const qsizetype wanted = (std::max(2 * room, size + more) + least - 1) / least * least;
    void *place = data ? ::mremap(data, size_t(room), size_t(wanted), MREMAP_MAYMOVE)
                       : ::mmap(nullptr, size_t(wanted), PROT_READ | PROT_WRITE,
                                MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED)
        throw std::bad_alloc();
    data = static_cast<char *>(place);
    room = wanted;
    // A system that refuses this makes the copies dearer, nothing else.
    ::madvise(data, size_t(room), MADV_DONTFORK);
}

} // namespace varnel
