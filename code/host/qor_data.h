// SPDX-License-Identifier: MIT
#ifndef QOR_DATA_H
#define QOR_DATA_H

/** Host library qor_data, the job database: names, layers of a step, drill tools of a layer.
 *
 * Sizes and tolerances are in host size units, 400 to the micron. All functions return a
 * status, 0 for success.
 */

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A drill tool of a layer; records stand in an array without gaps. */
typedef struct qor_drl_tool
{
    int reserved_0;
    int tool_type; /**< 0 plated, 1 non-plated, 2 via */
    int tool_sub_type; /**< 0 standard, 1 laser, 2 photo, 3 press fit */
    int min_tol; /**< minus tolerance */
    int max_tol; /**< plus tolerance */
    int reserved_20[17];
    int finished_size; /**< finished hole size, -1 when the tool has none */
    int reserved_92;
    int count; /**< number of holes */
} qor_drl_tool;

static_assert(offsetof(qor_drl_tool, tool_type) == 4, "layout of the host");
static_assert(offsetof(qor_drl_tool, tool_sub_type) == 8, "layout of the host");
static_assert(offsetof(qor_drl_tool, min_tol) == 12, "layout of the host");
static_assert(offsetof(qor_drl_tool, max_tol) == 16, "layout of the host");
static_assert(offsetof(qor_drl_tool, finished_size) == 88, "layout of the host");
static_assert(offsetof(qor_drl_tool, count) == 96, "layout of the host");
static_assert(sizeof(qor_drl_tool) == 100, "layout of the host");

/** What qor__drl_tools_get fills. */
typedef struct qor_drl_tools
{
    char reserved_0[72];
    const qor_drl_tool* tools; /**< the host's; lives to the next call. Not set by a mere count */
    int num_tools;
    char reserved_84[108];
} qor_drl_tools;

static_assert(offsetof(qor_drl_tools, tools) == 72, "layout of the host");
static_assert(offsetof(qor_drl_tools, num_tools) == 80, "layout of the host");
static_assert(sizeof(qor_drl_tools) == 192, "layout of the host");

/** The name of the job of a step.
 *
 * @param name  zeroed buffer of 65 bytes; the second argument is 0
 */
int qor__data_id2parent(int id, int, char* name);

/** The name of a step or layer, into a zeroed buffer of 65 bytes. */
int qor__data_id2name(int id, char* name);

/** The ids of the step's layers that hold drill tools, in the host's order.
 *
 * @param pattern  "*"; the three numbers are 192, 3 and -1
 * @param ids      null at first; a block for zeb__mem_free if the function sets it
 * @param count    length of the block
 */
int qor__lst_lyr_stp_ids(int stpid, const char* pattern, int, int, int, int** ids, int* count);

/** The drill tools of a layer.
 *
 * @param count_only  only num_tools is wanted
 */
int qor__drl_tools_get(int layer_id, bool count_only, qor_drl_tools* result);

#ifdef __cplusplus
}
#endif

#endif
