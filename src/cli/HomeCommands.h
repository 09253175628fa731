#pragma once

#include "cli/HomeCommand.h"
#include "loginitems/LoginItemChange.h"

namespace varnel::cli {

// The commands that work home by home, alike to whoever runs them. What each does stands in the
// source that is named after it.

class ListCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

/// A command that reads one setting and prints it: alike as JSON, each in its own words as text.
class OneSettingCommand : public HomeCommand {
protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
    [[nodiscard]] static ParameterInfo settingParameter();
    [[nodiscard]] virtual QString text(const SettingReport &report, const Style &style) const = 0;
};

class ShowCommand : public OneSettingCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] QString text(const SettingReport &report, const Style &style) const override;
};

class GetCommand : public OneSettingCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    /// With --key: what stands in the file, whatever the setting makes of it.
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
    [[nodiscard]] QString text(const SettingReport &report, const Style &style) const override;
};

class SetCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class ResetCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class SearchCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class DiffCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class ApplyCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class ExportCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class LoginItemsListCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

/// Adds, removes, enables or disables one login item: four commands of one shape.
class LoginItemsChangeCommand : public HomeCommand {
public:
    explicit LoginItemsChangeCommand(LoginItemChange::Action action) : action(action) { }

    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;

private:
    LoginItemChange::Action action;
};

class BackupsListCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class BackupsShowCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class BackupsRestoreCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class BackupsDeleteCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

class DoctorCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
    [[nodiscard]] Result<HomeFolder> takeHome(const HomeFolder &home,
                                              const Request &request) const override;
    [[nodiscard]] HomeOutcome notTaken(const HomeFolder &home, const Error &why) const override;
};

} // namespace varnel::cli
