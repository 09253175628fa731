#include "cli/CommandTree.h"

#include "base/Literals.h"

#include <algorithm>

namespace varnel::cli {

namespace {

TreeNode &nodeAt(QList<TreeNode> &tree, const QString &path)
{
    const auto found = std::find_if(tree.begin(), tree.end(),
                                    [&](const TreeNode &node) { return node.path == path; });
    if (found != tree.end())
        return *found;
    tree.append({path, {}});
    return tree.last();
}

/// The word is there already when it is a command of its own, or holds another.
void addWord(TreeNode &node, const TreeWord &word)
{
    const bool known = std::any_of(node.below.begin(), node.below.end(),
                                   [&](const TreeWord &below) { return below.word == word.word; });
    if (!known)
        node.below.append(word);
}

} // namespace

QList<TreeNode> commandTree(const Commands &commands)
{
    QList<TreeNode> tree {{QString(), {}}};
    for (const auto &command : commands) {
        const CommandInfo info = command.info();
        const qsizetype blank = info.name.lastIndexOf(u' ');
        const QString group = blank < 0 ? QString() : info.name.left(blank);
        if (!group.isNull())
            addWord(nodeAt(tree, QString()), {group, helpOfGroup(group, commands)});
        for (const QString &name : allNames(info))
            addWord(nodeAt(tree, group), {name.mid(blank + 1), info.summary});
    }
    return tree;
}

QString helpOfGroup(const QString &group, const Commands &commands)
{
    QStringList words;
    for (const auto &command : commands) {
        if (command.name == group)
            return command.info().summary;
        if (command.name.startsWith(group + u' '))
            words.append(command.name.mid(group.size() + 1));
    }
    return words.join(u", ");
}

QStringList allNames(const CommandInfo &info)
{
    QStringList names {info.name};
    for (const QString &alias : info.aliases)
        names.append(info.name.left(info.name.lastIndexOf(u' ') + 1) + alias);
    return names;
}

bool repeats(const ParameterInfo &parameter)
{
    return parameter.count != ParameterInfo::Count::One
        && parameter.count != ParameterInfo::Count::Optional;
}

QList<OptionInfo> sharedOptions()
{
    return commonOptions() + QList<OptionInfo> {{u"help"_s, {}, u"show help"_s}};
}

QList<OptionInfo> allOptions(const CommandInfo &info)
{
    return info.options + sharedOptions();
}

QList<OptionInfo> programOptions()
{
    return {{u"version"_s, {}, u"show the version"_s}};
}

} // namespace varnel::cli
