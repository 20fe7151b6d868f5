// SPDX-License-Identifier: MIT
#ifndef ZEB_LOWLEVEL_H
#define ZEB_LOWLEVEL_H

/** Host library zeb_lowlevel: log, error sound, texts, memory, strings, host folders.
 *
 * Everything is called on the host's GUI thread. Texts are in the local 8-bit encoding.
 * Functions that can fail return an int status, 0 for success.
 */

#include <stdbool.h>
#include <stddef.h>

#ifdef __GNUC__
#    define ZEB_PRINTF(formatIndex, firstIndex)                                                    \
        __attribute__((format(printf, formatIndex, firstIndex)))
#else
#    define ZEB_PRINTF(formatIndex, firstIndex)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** The host's units. Any int is a valid value in C++ too: a host may know more units than these. */
#ifdef __cplusplus
enum zeb_units_enum : int
{
#else
typedef enum zeb_units_enum
{
#endif
    ZEB_UNITS_INCHES = 0,
    ZEB_UNITS_MILLIMETERS = 1,
    ZEB_UNITS_MILS = 2,
    ZEB_UNITS_MICRONS = 3
#ifdef __cplusplus
};
#else
} zeb_units_enum;
#endif

/** Writes an entry to the host's log.
 *
 * @param level   level word, such as "INTERNAL" or "ERROR"
 * @param format  printf format; a text key may be used as format, since its separators hold no "%"
 */
int zeb__log_write(const char* level, const char* format, ...) ZEB_PRINTF(2, 3);

/** Logs that a host call at this place gave a non-zero status. */
int zeb__log_status_check(const char* file, int line);

/** Sounds the host's error signal. */
int zeb__err_sound(void);

/** The text of a text key in the user's language, or the key's default text.
 *
 * @param key  "@$@#module@$@#GENERAL@$@#number@$@#default text"
 * @return text owned by the host
 */
const char* zeb__nls_nlst(const char* key);

/** A zeroed block of count elements of size bytes, or null when out of memory.
 *
 * @param flag        always 1
 * @param file, line  the caller's place
 * @return block for zeb__mem_free
 */
void* zeb__mem_calloc(size_t count, size_t size, int flag, const char* file, int line);

/** Releases a block of the host's allocator; flag is always 1. */
int zeb__mem_free(void* block, int flag, const char* file, int line);

/** A copy of a text from the host's allocator, or null when out of memory. */
char* zeb__str_dup_fn(const char* text, const char* file, int line);

/** Copies at most limit bytes and terminates the text; dest has room for limit + 1. */
char* zeb__str_ncpy(char* dest, const char* source, int limit);

/** The full path of a file that is known by its relative name.
 *
 * @param location  number of the location; 2 is the data folder, writable and one for all steps
 * @param name      relative file name
 * @param path      buffer of size + 1 bytes; with status 0 it holds the path, also for a file
 *                  that does not exist yet
 * @param size      longest path that fits, terminator not counted
 * @param found     whether the file exists
 */
int zeb__sarn_get_dir(int location, const char* name, char* path, int size, bool* found);

/** The folder that holds the host's resources; text owned by the host. */
const char* zeb__sarn_get_epath(void);

/** The name of a unit; text owned by the host. */
const char* zeb__sarn_get_Units_str(zeb_units_enum units);

#ifdef __cplusplus
}
#endif

#endif
