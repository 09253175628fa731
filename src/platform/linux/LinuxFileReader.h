#pragma once

#include "platform/FileReader.h"

namespace varnel {

/// Files of the host itself: bundles, system files. Links are followed wherever they lead.
class LinuxFileReader : public FileReader {
public:
    bool exists(const QString &path) const override;
    Result<QByteArray> read(const QString &path) const override;
};

} // namespace varnel
