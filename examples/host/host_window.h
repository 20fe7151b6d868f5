/* SPDX-License-Identifier: MIT */
#ifndef HOST_WINDOW_H
#define HOST_WINDOW_H

/** The host's side of Qt, which a C program can't have by itself. */

#include "brox_proxy.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Makes the QApplication, which must exist before the first viewer; argc and argv outlive it. */
void host_start_qt(int* argc, char** argv);

/** Shows a step's viewer in a window until the user has closed it; the viewer ends with it. */
int host_show_viewer(int stpid);

/** Deletes a viewer that brox__proxy_close_brox has let go; null is no viewer. */
void host_delete_viewer(BroxViewer* viewer);

void host_end_qt(void);

#ifdef __cplusplus
}
#endif

#endif
