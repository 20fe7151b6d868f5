// SPDX-License-Identifier: MIT
#ifndef BROX_TYPES_H
#define BROX_TYPES_H

/** What host and module exchange beside numbers and texts; part of brox_proxy.h. */

/** A bad argument, or a viewer that could not be made. */
#define BROX_BAD_ARGUMENT 824001
/** The host's allocator gave null. */
#define BROX_OUT_OF_MEMORY 824000

#ifdef __cplusplus
extern "C" {
#endif

/** Tells the host that the user has renamed or deleted a drill tool model.
 *
 * @param step_num  number of the step in the host's editor data, never negative; not the stpid
 * @param old_name  the model's name before, valid during the call only
 * @param new_name  the model's name now, valid during the call only; null when it was deleted
 */
typedef void (*brox_model_renamed_deleted_cb)(
    int step_num, const char* old_name, const char* new_name);

#ifdef __cplusplus
}
#endif

#endif
