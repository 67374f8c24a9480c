// SPDX-License-Identifier: MIT
// What the operations on alignment tables and files report.
#pragma once

#include <QString>

/// Result codes shared by all programs that work with alignment tables. The numbers are fixed; those that
/// this program does not produce are kept for the others. It produces Ok, FileError, InternalError,
/// VersionMismatch, FileCrcFailed, TableWrongSdrType and ListIsEmpty.
enum class [[nodiscard]] AlignResult : int{
    Ok = 0,
    GainOutOfRange = 1,
    FrequencyOutOfRange = 2,
    SampleFrequencyOutOfRange = 3,
    NoTableForDevice = 4,
    NoDataSetForPath = 5,
    ArrayTooSmall = 6,
    DataSetPointerIsNull = 7,
    DataEntryPointerIsNull = 8,
    FileError = 9,
    ParameterNameMismatch = 10,
    InternalError = 11, // no memory, or counts and lengths beyond what the records can hold
    SdrTypeMismatch = 12,
    VersionMismatch = 13,
    FileCrcFailed = 14,
    NoPowerLevels = 15,
    NoNoiseLevels = 16,
    TableWrongDataType = 17,
    TableWrongSdrType = 18,
    DataSetWrongDataType = 19,
    DataSetWrongSdrType = 20,
    CsvFileTooBig = 21,
    ListIsEmpty = 22,
};

/// The message of a result code in the language of the user interface; for a code that is none, a text that
/// names the number.
[[nodiscard]] QString AlignResultText(int code);
[[nodiscard]] QString AlignResultText(AlignResult result);
