#pragma once

#include "plist/PropertyList.h"

namespace varnel::plist {

/// What each of the two formats does; PropertyList's own comments hold here too. Paths of an edit
/// are not empty.
class PropertyList::Backend {
public:
    Backend() = default;
    Backend(const Backend &) = delete;
    Backend &operator=(const Backend &) = delete;
    virtual ~Backend() = default;

    [[nodiscard]] virtual std::unique_ptr<Backend> copy() const = 0;
    [[nodiscard]] virtual Format format() const = 0;
    [[nodiscard]] virtual Value value(const QStringList &path) const = 0;
    [[nodiscard]] virtual std::optional<QStringList> keys(const QStringList &path) const = 0;
    [[nodiscard]] virtual std::optional<Object> object(const QStringList &path) const = 0;
    [[nodiscard]] virtual std::optional<Place> place(const QStringList &path) const = 0;
    [[nodiscard]] virtual qsizetype count(const QStringList &path) const = 0;
    [[nodiscard]] virtual std::optional<Object> element(const QStringList &path,
                                                        qsizetype index) const = 0;
    [[nodiscard]] virtual std::optional<Place> elementPlace(const QStringList &path,
                                                            qsizetype index) const = 0;
    [[nodiscard]] virtual std::vector<Object> elements(const QStringList &path) const = 0;
    virtual Result<void> set(const QStringList &path, const NewValue &value) = 0;
    virtual Result<void> remove(const QStringList &path) = 0;
    virtual Result<void> put(const QStringList &path, const Object &object,
                             const std::optional<Place> &place) = 0;
    virtual Result<void> removeElement(const QStringList &path, qsizetype index) = 0;
    /// The index is not below 0.
    virtual Result<void> insertElement(const QStringList &path, qsizetype index,
                                       const Object &object, const std::optional<Place> &place) = 0;
    [[nodiscard]] virtual const QByteArray &bytes() const = 0;
};

} // namespace varnel::plist
