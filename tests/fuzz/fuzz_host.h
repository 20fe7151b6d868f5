// SPDX-License-Identifier: MIT
#ifndef FUZZ_HOST_H
#define FUZZ_HOST_H

#include <QString>

#include <cstddef>
#include <cstdint>

/** What the fuzzer, or the corpus test, calls with each input. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/** Starts application and host at the first call; gives the id of the one step. */
int fuzzStep();

/** Writes an input as one of the module's files; gives its path in the host's data folder. */
QString fuzzFile(const char* name, const std::uint8_t* data, std::size_t size);

/** Ends the process, and so the run, if what must hold does not. */
void fuzzCheck(bool holds, const char* what);

#endif
