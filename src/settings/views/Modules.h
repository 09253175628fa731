#pragma once

#include "settings/views/SettingModule.h"

namespace varnel {

// The shared state knows each module by a type of its own; what they do is told by their rows.

class GeneralModule final : public SettingModule {
public:
    GeneralModule() : SettingModule(ModuleId::General) { }
};

class DockModule final : public SettingModule {
public:
    DockModule() : SettingModule(ModuleId::Dock) { }
};

class FinderModule final : public SettingModule {
public:
    FinderModule() : SettingModule(ModuleId::Finder) { }
};

class iTunesModule final : public SettingModule {
public:
    iTunesModule() : SettingModule(ModuleId::ITunes) { }
};

class MailModule final : public SettingModule {
public:
    MailModule() : SettingModule(ModuleId::Mail) { }
};

class QuickTimePlayerModule final : public SettingModule {
public:
    QuickTimePlayerModule() : SettingModule(ModuleId::QuickTimePlayer) { }
};

class SafariModule final : public SettingModule {
public:
    SafariModule() : SettingModule(ModuleId::Safari) { }
};

class ScreenCaptureModule final : public SettingModule {
public:
    ScreenCaptureModule() : SettingModule(ModuleId::ScreenCapture) { }
};

class TimeMachineModule final : public SettingModule {
public:
    TimeMachineModule() : SettingModule(ModuleId::TimeMachine) { }
};

} // namespace varnel
