#pragma once

#include <QString>

namespace varnel {

class Examination;

/// The preference files of the settings: whether they can be read, whether their applications read
/// them, what stands in them that is no value of a setting, and what counts before them.
void examinePreferences(Examination &examination);

/// One that holds no setting: whether it can be read.
void examineFile(Examination &examination, const QString &path);

} // namespace varnel
