#pragma once

#include <QList>
#include <QString>

#include <memory>

namespace varnel {

/// One line of an outline: a name, and the lines beneath it.
class Node {
public:
    using List = QList<std::shared_ptr<Node>>;

    /// Null until set.
    [[nodiscard]] QString name() const { return text; }
    void setName(const QString &name) { text = name; }

    /// To be changed in place.
    [[nodiscard]] List &children() { return below; }
    [[nodiscard]] const List &children() const { return below; }
    void setChildren(const List &children) { below = children; }

    [[nodiscard]] bool isGroup() const { return group; }
    void setIsGroup(bool isGroup) { group = isGroup; }

private:
    QString text;
    List below;
    bool group = false;
};

} // namespace varnel
