#pragma once

namespace varnel {

class Examination;

/// What this program keeps in the home, and what its runs have left: backup files, kept files, the
/// stores of disabled login items, journals, temporary files.
void examineBackups(Examination &examination);

} // namespace varnel
