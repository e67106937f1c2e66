// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Looks at one input. Each target has its own; the fuzzer calls it in its build, replay.cpp in
/// every other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Ends the process as a fault does, unless \a holds. \a what is the promise that was broken.
inline void mustHold(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/// An application object of the type that the target needs; lives as long as the process.
template <typename Application> Application *makeApplication()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    return new Application(argc, argv);
}
