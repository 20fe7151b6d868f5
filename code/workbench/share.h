// SPDX-License-Identifier: MIT
#ifndef SHARE_H
#define SHARE_H

#include <QString>

namespace brox {

/** Where a file lies that comes with the program: in the build tree, else as installed. */
QString sharePath(const QString& name);

} // namespace brox

#endif
