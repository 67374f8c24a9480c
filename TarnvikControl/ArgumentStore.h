// SPDX-License-Identifier: MIT
// The command line, in the fixed buffers that the application object works on.
#pragma once

#include <array>
#include <string>
#include <vector>

/// Holds the first five arguments, the program's name included, as UTF-8. The application object keeps
/// references to the count and the vector, and takes out of them what it understands; the buffers stay as
/// they are.
class ArgumentStore
{
public:
    static constexpr int Capacity = 5;          ///< Arguments beyond are dropped.
    static constexpr int LongestArgument = 259; ///< Bytes.

    /// Copies the arguments. False when one of them is too long; the program must not run with half an
    /// argument.
    [[nodiscard]] bool Fill(const std::vector<std::string> &arguments);

    [[nodiscard]] int &argc() { return Count; }
    [[nodiscard]] char **argv() { return Vector.data(); }

    /// True when the first argument behind the program's name is "--DEBUG".
    [[nodiscard]] bool wantsDebugConsole() const;

private:
    std::array<std::array<char, LongestArgument + 1>, Capacity> Buffers = {};
    std::array<char *, Capacity + 1> Vector = {}; // ends with a null pointer, as argv does
    int Count = 0;
};
