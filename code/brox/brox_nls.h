// SPDX-License-Identifier: MIT
#ifndef BROX_NLS_H
#define BROX_NLS_H

#include "zeb_lowlevel.h"

#include <QString>

/** A text key of the host, a string literal: the module key names the source, the number finds
 *  the text again, and the default text stands where there is no translation. */
#define BROX_KEY(module, text, number) "@$@#" module "@$@#GENERAL@$@#" number "@$@#" text

/** The text of a key in the user's language. */
inline QString broxText(const char* key)
{
    return QString::fromLocal8Bit(zeb__nls_nlst(key));
}

// The texts of each source: the form compiler writes its calls so, with the number from the comment
// of a form's string.
#define BROX_VIEWER_TEXT(text, number) broxText(BROX_KEY("brox_viewer", text, number))
#define BROX_MODEL_MANAGER_TEXT(text, number) broxText(BROX_KEY("brox_model_manager", text, number))
#define BROX_AMOUNTS_TEXT(text, number) broxText(BROX_KEY("brox_amounts", text, number))
#define BROX_TESTER_TEXT(text, number) broxText(BROX_KEY("brox_tester", text, number))
#define BROX_JOB_DATA_TEXT(text, number) broxText(BROX_KEY("brox_job_data", text, number))
#define BROX_DHS_TEXT(text, number) broxText(BROX_KEY("brox_dhs", text, number))
#define BROX_BITS_TABLE_TEXT(text, number) broxText(BROX_KEY("brox_bits_table", text, number))

#endif
