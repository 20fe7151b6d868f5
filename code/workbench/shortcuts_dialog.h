// SPDX-License-Identifier: MIT
#ifndef SHORTCUTS_DIALOG_H
#define SHORTCUTS_DIALOG_H

class QWidget;

namespace brox {

/** Shows all keys of a window: those of its menus, and those of tables and the map. */
void showShortcuts(QWidget* window);

} // namespace brox

#endif
