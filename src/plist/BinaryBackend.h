#pragma once

#include "plist/Backend.h"
#include "plist/BinaryEdit.h"

namespace varnel::plist {

class PropertyList::BinaryBackend : public PropertyList::Backend {
public:
    static Result<std::unique_ptr<Backend>> open(QByteArray bytes);

    BinaryBackend(QByteArray bytes, const BinaryTrailer &trailer);

    [[nodiscard]] std::unique_ptr<Backend> copy() const override;
    [[nodiscard]] Format format() const override { return Format::Binary; }
    [[nodiscard]] Value value(const QStringList &path) const override;
    [[nodiscard]] std::optional<QStringList> keys(const QStringList &path) const override;
    Result<void> set(const QStringList &path, const NewValue &value) override;
    Result<void> remove(const QStringList &path) override;
    [[nodiscard]] const QByteArray &bytes() const override { return file; }

private:
    [[nodiscard]] std::optional<std::uint32_t> find(const QStringList &path) const;
    Result<void> apply(const BinaryEdit &edit);

    QByteArray file;
    BinaryReader reader;
};

} // namespace varnel::plist
