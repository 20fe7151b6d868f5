// SPDX-License-Identifier: MIT
#ifndef MODEL_COPY_H
#define MODEL_COPY_H

#include <cstddef>

namespace brox {

class HostSession;

/** Makes a copy of the model that is selected in a step's viewer, as a user would by hand; its name
 *  is open for typing then, and nothing is saved. Does nothing if no model is selected.
 *
 * @throws HostError
 */
void duplicateModel(HostSession& session, size_t step);

} // namespace brox

#endif
