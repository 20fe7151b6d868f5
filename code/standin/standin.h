// SPDX-License-Identifier: MIT
#ifndef STANDIN_H
#define STANDIN_H

/** The controls of the stand-ins: how a host program or a test fills the host's five libraries.
 *
 * Everything else about the stand-ins is reached through the host's own operations. All
 * functions are called on one thread; texts are UTF-8; sizes are in host size units, 400 to the
 * micron.
 */

#include <stdbool.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

#define STANDIN_EXPORT __attribute__((visibility("default")))

/** Forgets job, steps, folders, hook, log sink, language, failures and counts; live blocks stay. */
STANDIN_EXPORT void standin_reset(void);

/* --- Job: steps and layers have ids from one sequence that never repeats --- */

/** A drill tool as the job database holds it; the numbers are those of qor_drl_tool. */
typedef struct standin_tool
{
    int tool_type; /**< 0 plated, 1 non-plated, 2 via */
    int tool_sub_type; /**< 0 standard, 1 laser, 2 photo, 3 press fit */
    int min_tol;
    int max_tol;
    int finished_size; /**< -1 for none */
    int count;
} standin_tool;

/** Sets the job's name. */
STANDIN_EXPORT void standin_set_job(const char* name);

/** Adds a step to the job; it is in the editor's data.
 *
 * @param units  0 inch family, 1 metric family; others are handed to the asker as they are
 * @return the step's id (stpid); its step number is another number
 */
STANDIN_EXPORT int standin_add_step(const char* name, int units);

/** Changes a step's units, as standin_add_step has them. */
STANDIN_EXPORT void standin_set_units(int stpid, int units);

/** Takes a step out of the editor's data (its number is then negative) or puts it back. */
STANDIN_EXPORT void standin_set_in_editor(int stpid, bool in_editor);

/** Adds a layer to a step; one with tools counts as a drill layer.
 *
 * @return the layer's id; -1, with an entry in the log, if there is no such step
 */
STANDIN_EXPORT int standin_add_layer(int stpid, const char* name);

/** Adds a drill tool to a layer. */
STANDIN_EXPORT void standin_add_tool(int layer_id, const standin_tool* tool);

/* --- Folders --- */

/** The data folder, location 2 of zeb__sarn_get_dir; null: there is none, and it fails. */
STANDIN_EXPORT void standin_set_data_dir(const char* path);

/** Names the path of one of the module's files.
 *
 * @param name  the file's name in the data folder, such as "brox/brox.xml"
 * @return the path to use, in memory of the program's that lives until the next question; null:
 *         there is none, and zeb__sarn_get_dir fails as it does without a data folder
 */
typedef const char* (*standin_path_hook)(const char* name, void* context);

/** Lets a program answer zeb__sarn_get_dir in place of the data folder; null: the folder again.
 *
 * The module asks before each load and before each save. It loads while a viewer is being made,
 * and at no other time; a save for which there is no path stops, with all still unsaved.
 */
STANDIN_EXPORT void standin_set_path_hook(standin_path_hook hook, void* context);

/** The resource folder, which zeb__sarn_get_epath gives. */
STANDIN_EXPORT void standin_set_resource_dir(const char* path);

/** The folder that ZExtFileDialog gives as system folder; null: there is none. */
STANDIN_EXPORT void standin_set_system_dir(const char* path);

/* --- Log, sound, texts --- */

/** Receives a log entry: level word and finished text. Entries of zeb__log_status_check have
 *  the level "STATUS" and the text "file line". */
typedef void (*standin_log_sink)(const char* level, const char* text, void* context);

/** Sends log entries to a sink instead of standard error; null: standard error again. */
STANDIN_EXPORT void standin_set_log_sink(standin_log_sink sink, void* context);

/** How often zeb__err_sound was called. */
STANDIN_EXPORT int standin_error_sounds(void);

/** Reads the catalogue of a language, from which zeb__nls_nlst takes the texts it holds.
 *
 * @param path  catalogue file; null: default texts again
 * @return false, with an entry in the log, if the file can't be read
 */
STANDIN_EXPORT bool standin_set_catalogue(const char* path);

/* --- Calculator --- */

/** What the calculator gave at its last evaluation.
 *
 * @return false if it gave nothing; *value is then as it was
 */
STANDIN_EXPORT bool standin_last_value(double* value);

/* --- Failures and counts --- */

/** Lets a host operation fail at its nth call from now on, once.
 *
 * Operations without a status fail in their own way: allocations give null. A failing operation
 * writes no result. A second call for the same operation replaces the first.
 *
 * @param operation  name of the host function, such as "vex__data_get_units"
 * @param nth        1 is the next call; 0: no failure any more
 * @param status     status to fail with; 0 counts as 824000, out of memory
 */
STANDIN_EXPORT void standin_fail(const char* operation, int nth, int status);

/** How often a host operation was called since the start or the last standin_reset. */
STANDIN_EXPORT int standin_calls(const char* operation);

/** Blocks of the host's allocator that have not been freed. */
STANDIN_EXPORT size_t standin_live_blocks(void);

#ifdef __cplusplus
}
#endif

#endif
