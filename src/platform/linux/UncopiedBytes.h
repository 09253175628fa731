#pragma once

#include <QByteArray>

namespace varnel {

/// Bytes that grow at their end, and that copies of this process do not get: what a copy costs
/// grows with all that it gets. In a copy nothing of this class may be called.
class UncopiedBytes {
public:
    UncopiedBytes() = default;
    UncopiedBytes(const UncopiedBytes &) = delete;
    UncopiedBytes &operator=(const UncopiedBytes &) = delete;
    ~UncopiedBytes();

    void append(const QByteArray &more);
    [[nodiscard]] bool isEmpty() const { return size == 0; }
    /// Until the next change.
    [[nodiscard]] QByteArrayView bytes() const { return {data, size}; }

private:
    void makeRoom(qsizetype more);

    char *data = nullptr;
    qsizetype size = 0;
    qsizetype room = 0;
};

} // namespace varnel
