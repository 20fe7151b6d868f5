// SPDX-License-Identifier: MIT
#ifndef BROX_MODELS_FILE_H
#define BROX_MODELS_FILE_H

#include "brox_xml_file.h"

class BroxModelSet;

/** The file in which all drill tool models lie. */
extern const BroxXmlFile modelsFile;

/** Replaces the models of a set by those of a file; false, and the set as it was, if it is none.
 *
 * Within a models file nothing is a failure: what is unknown is skipped, a model without a name
 * too, and a number that is none leaves its value alone.
 */
bool readModels(const QString& path, BroxModelSet* models);

/** Writes all models of a set; false if the file can't be opened or written whole. */
bool writeModels(const QString& path, const BroxModelSet& models);

#endif
