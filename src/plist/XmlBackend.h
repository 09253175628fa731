#pragma once

#include "plist/Backend.h"
#include "plist/XmlEdit.h"

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
    Result<void> set(const QStringList &path, const NewValue &value) override;
    Result<void> remove(const QStringList &path) override;
    [[nodiscard]] const QByteArray &bytes() const override { return document.file; }

private:
    /// What stands at a path that is not empty.
    [[nodiscard]] std::optional<XmlFound> find(const QStringList &path) const;
    Result<void> apply(const QStringList &path, const NewValue *value, const XmlLocation &location,
                       const std::vector<XmlSplice> &splices);

    XmlDocument document;
};

} // namespace varnel::plist
