// SPDX-License-Identifier: MIT
#ifndef BROX_STEP_DATA_H
#define BROX_STEP_DATA_H

/** The module's own way to a step's data in the host, and to the host's callback; nothing of this
 * is exported.
 *
 * Each routine returns a status like the exported ones: 0, BROX_BAD_ARGUMENT for a bad pointer
 * (nothing is written then), BROX_OUT_OF_MEMORY, or a host's status. Failures are logged here.
 * Sizes are in host size units. A step that is not in the editor's data is no failure: status 0,
 * and the output is empty.
 */

#include "brox_man.h"
#include "brox_proxy.h"

/** A drill tool of a step. */
struct drill_size_info
{
    int layer_id;
    int drill_type; ///< a DrillTypeManager::DrillType
    int count; ///< number of holes
    int min_tol;
    int max_tol;
    int fhs; ///< 0 if the tool has no finished size
};

/** Keeps the host's callback; the first one that is not null stays for good. */
void registerRenamedDeletedCallback(brox_model_renamed_deleted_cb callback);

/** Passes a rename on to the host's callback, or a deletion if new_name is null. */
int brox__proxy_model_renamed_deleted(int stpid, const char* old_name, const char* new_name);

/** Maps the host's tool types to a DrillTypeManager::DrillType; Undefined for unknown ones. */
int brox__proxy_drill_type(int tool_type, int tool_sub_type, int* brox_drill_type);

/** Gathers the drill tools of a step, by layer in the host's order.
 *
 * @param drill_sizes     block for zeb__mem_free; not written if there are no tools
 * @param drill_size_num  number of tools
 */
int brox__proxy_get_drill_sizes(int stpid, drill_size_info** drill_sizes, int* drill_size_num);

/** The step's units as a zeb_units_enum; not written if the step is not in the editor's data. */
int brox__proxy_get_units(int stpid, int* units);

/** The name of the step's units, owned by the host; not written if there are no units. */
int brox__proxy_get_units_str(int stpid, const char** units_str);

/** A size as the user reads it; the buffer has 112 bytes. */
int brox__proxy_size_to_str(int stpid, int val, char* val_str);

/** A size in mils or microns. */
int brox__proxy_size_to_double(int stpid, int val, double* dval);

/** A number in mils or microns as a size. */
int brox__proxy_double_to_size(int stpid, double dval, int* val);

#endif
