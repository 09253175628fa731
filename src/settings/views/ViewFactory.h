#pragma once

#include "settings/views/ViewContext.h"

#include <QString>

#include <memory>

namespace varnel {

class GenericView;

/// The view of a class named in the catalogue. Most classes are wholly told by their rows and share
/// one view.
[[nodiscard]] std::unique_ptr<GenericView> makeSettingView(const QString &viewClass,
                                                           const ViewContext &context);

} // namespace varnel
