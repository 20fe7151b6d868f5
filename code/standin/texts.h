// SPDX-License-Identifier: MIT
#ifndef STANDIN_TEXTS_H
#define STANDIN_TEXTS_H

namespace brox {

/** The text of a key in the language of the catalogue, or null if the text is no key. */
const char* textOfKey(const char* key);

} // namespace brox

#endif
