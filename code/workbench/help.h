// SPDX-License-Identifier: MIT
#ifndef HELP_H
#define HELP_H

class QString;
class QWidget;

namespace brox {

/** Shows the page for users in a window of its own, which deletes itself. */
void showUserGuide(QWidget* parent);

/** Shows all keys of a window: those of its menus, and those of tables and the map. */
void showShortcuts(QWidget* window);

void showAbout(QWidget* window, const QString& dataDir);

} // namespace brox

#endif
