// SPDX-License-Identifier: MIT
#ifndef BROX_PROXY_H
#define BROX_PROXY_H

/** brox, the drill tool manager: the interface for its host, from C and from C++.
 *
 * Sizes. Every hole size and tolerance is a signed 32-bit integer in host size units:
 * 400 to the micron and 10160 to the mil, so 400000 to the millimetre and 10160000 to the inch.
 *
 * Steps. A job step is named by its id in the host's job database (stpid); -1 is no step.
 *
 * Texts are in the local 8-bit encoding.
 *
 * Statuses. Every function returns 0 for success, one of the two codes below, or the status of
 * a host function that failed, unchanged. Each failure is also written to the host's log. The
 * error sound comes with the two codes, and not with a host's status.
 *
 * Pointers. A pointer argument is refused with BROX_BAD_ARGUMENT if its value is 1000 or below;
 * nothing is written then. Only brox__proxy_set_parent_viewer tests for null alone.
 *
 * Threads. All functions are called on the host's GUI thread, and the host's QApplication exists
 * before the first call.
 */

#if defined(__GNUC__)
#    define BROX_EXPORT __attribute__((visibility("default")))
#else
#    define BROX_EXPORT
#endif

/** A bad argument, or a viewer that could not be made. */
#define BROX_BAD_ARGUMENT 824001
/** The host's allocator gave null. */
#define BROX_OUT_OF_MEMORY 824000

#ifdef __cplusplus
class BroxViewer;
class QObject;
extern "C" {
#else
typedef struct BroxViewer BroxViewer;
typedef struct QObject QObject;
#endif

/** Tells the host that the user has renamed or deleted a drill tool model.
 *
 * @param step_num  number of the step in the host's editor data, never negative; not the stpid
 * @param old_name  the model's name before, valid during the call only
 * @param new_name  the model's name now, valid during the call only; null when it was deleted
 */
typedef void (*brox_model_renamed_deleted_cb)(
    int step_num, const char* old_name, const char* new_name);

/** Makes sure that the step has a viewer.
 *
 * The viewer is built hidden and reads the models file and the drill bits file. It is never
 * deleted by the module: the host deletes it, after brox__proxy_close_brox.
 *
 * @return BROX_BAD_ARGUMENT for stpid -1, or if the viewer could not be made
 */
BROX_EXPORT int brox__proxy_open_brox(int stpid);

/** Asks whether the step's viewer may close; asks the user if there are unsaved models.
 *
 * What is typed into an open cell of a table counts as entered. The user may take his time, and the
 * host may delete the viewer meanwhile: that is as if the user had cancelled.
 *
 * @param ok  1 if it may, also for a step without a viewer, else 0
 */
BROX_EXPORT int brox__proxy_can_close(int stpid, int* ok);

/** Forgets the step's viewer, which the host may then delete.
 *
 * Asks and saves nothing. A later brox__proxy_open_brox makes a new viewer.
 *
 * @return BROX_BAD_ARGUMENT for stpid -1
 */
BROX_EXPORT int brox__proxy_close_brox(int stpid);

/** Gives the step's viewer.
 *
 * @param brox  the viewer, or null if the step has none. It is a QWidget: a host casts the
 *              pointer with reinterpret_cast<QWidget*>, shows the widget where it likes, and
 *              deletes it
 */
BROX_EXPORT int brox__proxy_get_brox(int stpid, BroxViewer** brox);

/** Lets a viewer follow the units of a host object.
 *
 * To be called once for a viewer: each call makes one more connection.
 *
 * @param parent_viewer  a QObject with the signal unitsChanged(zeb_units_enum). If either
 *                       pointer is null, nothing happens
 * @return 0
 */
BROX_EXPORT int brox__proxy_set_parent_viewer(BroxViewer* brox, QObject* parent_viewer);

/** Registers the host's callback. The first one that is not null stays for good.
 *
 * @return 0
 */
BROX_EXPORT int brox__proxy_set_model_renamed_deleted_cb(brox_model_renamed_deleted_cb callback);

/** Lists the step's drill tool models in the order of the models file; opens the viewer if needed.
 *
 * @param models      array of names, or null if there are none. Array and names are the caller's,
 *                    to be released with zeb__mem_free. A name that could not be copied is null
 * @param num_models  number of models
 * @return BROX_OUT_OF_MEMORY if the array could not be made; *models is null then, and
 *         *num_models the number of models
 */
BROX_EXPORT int brox__proxy_get_model_list(int stpid, char*** models, int* num_models);

/** Turns a finished hole size into a drill size by a drill tool model; opens the viewer if needed.
 *
 * Amounts and use of the bit table are those of the named model. The formula is the one that
 * stands in the step's viewer, which belongs to the model that is selected there.
 *
 * @param tool_type      0 plated, 1 non-plated, 2 via; counts only with tool_sub_type 0
 * @param tool_sub_type  0 standard, 1 laser, 2 photo, 3 press fit
 * @param min_tol        minus tolerance, a magnitude
 * @param max_tol        plus tolerance, a magnitude
 * @param fhs            finished hole size
 * @param drill_size     drill hole size; 0 if there is no such model or the formula has no value;
 *                       below 0 if the formula says so, since its value is handed out as it is
 * @param bit            buffer of at least 8 bytes: the chosen bit's designation, cut to 7 bytes,
 *                       or empty if no bit was chosen
 * @return 0 also for an unknown model
 */
BROX_EXPORT int brox__proxy_calc_drill_size(int stpid, const char* model_name, int tool_type,
    int tool_sub_type, int min_tol, int max_tol, int fhs, int* drill_size, char* bit);

#ifdef __cplusplus
}
#endif

#endif
