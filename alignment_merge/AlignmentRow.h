// SPDX-License-Identifier: MIT
// One alignment table of one file, and what is known of its other versions.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

struct AlignTable;

/// A table of a driver's device. The pair of driver and hardware id identifies it.
///
/// Dates are kept in seconds since 1970-01-01 00:00:00 UTC, as files hold them: a QDateTime cannot express
/// all of them, and those that it cannot would all be equal.
struct AlignmentRow
{
    /// Where the table was found.
    enum State : std::uint8_t {
        Present = 0,       ///< in the recorder's folder
        NewInDataBase = 1, ///< only in an imported file
        UpdatePresent = 2, ///< in the recorder's folder, and with another date in an imported file
    };

    /// Bits of `flags`.
    enum Flag : std::uint8_t {
        driverIsNew = 1, ///< from the first file of its driver that was read
        takenOver = 2,   ///< checked at the last save
    };

    QString filePath; ///< the file from which the table was read
    QString driver;   ///< the driver's display name
    QString hardwareId;
    std::uint64_t alignedAt = 0;
    State state = Present;
    std::uint8_t flags = 0;
    QString updateFilePath;                       ///< the imported file of an UpdatePresent row
    std::optional<std::uint64_t> updateAlignedAt; ///< and the date of the table there

    [[nodiscard]] bool has(Flag flag) const { return (flags & flag) != 0; }
    void Set(Flag flag, bool on);

    /// Takes note of the same table in one more file. Of several imported versions only the newest stays.
    void AddVersion(const QString &file, std::uint64_t date);

    bool operator==(const AlignmentRow &) const = default;
};

/// What the imports offer for a row.
enum class AlignmentOffer {
    Nothing,      ///< the table is there, and no other version of it
    NewTable,     ///< a table that the recorder's folder does not have
    NewerVersion, ///< than the one in the recorder's folder
    OlderVersion,
};
[[nodiscard]] AlignmentOffer OfferOf(const AlignmentRow &row);

/// Whether an offer is taken unless the user decides otherwise.
[[nodiscard]] bool IsTakenByDefault(AlignmentOffer offer);

/// The hardware id of a table as text, and the way back to its bytes, as platform::BytesText has it: the
/// encoding of both systems is UTF-8 (on Windows by the programs' manifests).
[[nodiscard]] QString AlignmentHardwareId(const AlignTable &table);
[[nodiscard]] QByteArray AlignmentHardwareIdBytes(const QString &hardwareId);

/// The UTC date as "yyyy-MM-dd"; the number of seconds followed by "s" when the calendar does not reach that
/// far.
[[nodiscard]] QString AlignmentDateText(std::uint64_t secondsSinceEpoch);
