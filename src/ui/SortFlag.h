#pragma once

namespace varnel {

/// Which column of a table was clicked last, and the direction flag that goes with it.
///
/// The flag is named against its effect: true sorts ascending under the reverse indicator, false
/// descending under the ordinary one. A new column starts with false.
class SortFlag {
public:
    void click(int column)
    {
        sortDescending = column == lastColumn && !sortDescending;
        lastColumn = column;
    }

    int lastColumn = -1; ///< none
    bool sortDescending = false;
};

} // namespace varnel
