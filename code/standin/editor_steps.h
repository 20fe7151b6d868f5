// SPDX-License-Identifier: MIT
#ifndef STANDIN_EDITOR_STEPS_H
#define STANDIN_EDITOR_STEPS_H

#include "standin.h"

/** Puts a new step of the job into the editor's data, with the next step number. */
extern "C" STANDIN_EXPORT void standin_add_editor_step(int stpid, int units);

#endif
