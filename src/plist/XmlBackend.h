#pragma once

#include "plist/Backend.h"
#include "plist/XmlComparison.h"

namespace varnel::plist {

class PropertyList::XmlBackend : public PropertyList::Backend {
public:
    static Result<std::unique_ptr<Backend>> open(QByteArray bytes);

    explicit XmlBackend(XmlDocument document) : document(std::move(document)) { }

    [[nodiscard]] std::unique_ptr<Backend> copy() const override
    {
        return std::make_unique<XmlBackend>(document);
    }
    [[nodiscard]] Format format() const override { return Format::Xml; }
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
    [[nodiscard]] const QByteArray &bytes() const override { return document.file; }

private:
    /// What stands at a path that is not empty.
    [[nodiscard]] std::optional<XmlFound> find(const QStringList &path) const;
    /// The array at a path.
    [[nodiscard]] std::optional<XmlNode> findArray(const QStringList &path) const;
    [[nodiscard]] Object objectAt(const XmlNode &node) const;
    [[nodiscard]] bool isThere(const XmlLocation &location, const Object &object) const;
    Result<void> apply(const QStringList &path, const XmlWanted *wanted,
                       const XmlLocation &location, const std::vector<XmlSplice> &splices);
    Result<void> applyMember(const XmlMemberEdit &edit, bool inArray, const QStringList &path,
                             const QByteArray &markup, const XmlLocation &location);

    XmlDocument document;
};

} // namespace varnel::plist
