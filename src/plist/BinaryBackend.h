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
    [[nodiscard]] std::optional<Object> object(const QStringList &path) const override;
    [[nodiscard]] std::optional<Place> place(const QStringList &path) const override;
    [[nodiscard]] qsizetype count(const QStringList &path) const override;
    [[nodiscard]] std::optional<Object> element(const QStringList &path,
                                                qsizetype index) const override;
    [[nodiscard]] std::optional<Place> elementPlace(const QStringList &path,
                                                    qsizetype index) const override;
    [[nodiscard]] std::vector<Object> elements(const QStringList &path) const override;
    Result<void> set(const QStringList &path, const NewValue &value) override;
    Result<void> remove(const QStringList &path) override;
    Result<void> put(const QStringList &path, const Object &object,
                     const std::optional<Place> &place) override;
    Result<void> removeElement(const QStringList &path, qsizetype index) override;
    Result<void> insertElement(const QStringList &path, qsizetype index, const Object &object,
                               const std::optional<Place> &place) override;
    [[nodiscard]] const QByteArray &bytes() const override { return file; }

private:
    [[nodiscard]] std::optional<std::uint32_t> find(const QStringList &path) const;
    /// The array at a path.
    [[nodiscard]] std::optional<BinaryObject> findArray(const QStringList &path) const;
    [[nodiscard]] bool isThere(const BinaryEdit &edit, const Object &object,
                               const Object &converted) const;
    Result<void> apply(const BinaryEdit &edit);

    QByteArray file;
    BinaryReader reader;
};

} // namespace varnel::plist
