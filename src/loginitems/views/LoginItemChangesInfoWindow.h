#pragma once

#include "ui/ListSheet.h"

namespace varnel {

class SharedObject;

/// The login-item changes that are not saved yet.
class LoginItemChangesInfoWindow : public ListSheet {
    Q_OBJECT

public:
    LoginItemChangesInfoWindow(SharedObject &shared, QWidget *parent);

    void readChangesData();

private:
    SharedObject &shared;
};

} // namespace varnel
