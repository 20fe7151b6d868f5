// SPDX-License-Identifier: MIT
#ifndef USER_GUIDE_H
#define USER_GUIDE_H

class QWidget;

namespace brox {

/** Shows the page for users in a window of its own, which deletes itself. */
void showUserGuide(QWidget* parent);

} // namespace brox

#endif
