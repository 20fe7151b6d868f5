// SPDX-License-Identifier: MIT
#ifndef VEX_DATA_H
#define VEX_DATA_H

/** Host library vex_data: step numbers, units of a step, size conversion.
 *
 * Sizes are signed 32-bit integers in host size units: 400 to the micron, 10160 to the mil.
 * The number that the user reads is in mils for a step of the inch family and in microns for
 * one of the metric family. All functions return a status, 0 for success.
 */

#ifdef __cplusplus
extern "C" {
#endif

/** The step's number in the host's editor data; negative when the step is not there. */
int vex__data_stpid2vex_num(int stpid, int* vex_num);

/** 0 for the inch family, 1 for the metric family (not zeb_units_enum). */
int vex__data_get_units(int vex_num, int* units);

/** Host size to the number that the user reads; flag is always 1. */
int vex__size_p2milmicron(int vex_num, int size, int flag, double* value);

/** The same as text, into the caller's buffer, of which at most 112 bytes are used. */
int vex__size_p2s_milmicron(int vex_num, int size, int flag, char* text);

/** The number that the user types to host size; flag is always 1. */
int vex__size_milmicron2p(int vex_num, double value, int flag, int* size);

#ifdef __cplusplus
}
#endif

#endif
