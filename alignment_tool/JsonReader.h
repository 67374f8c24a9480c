// SPDX-License-Identifier: MIT
// Reads JSON that people write by hand: collects all errors, each with the path of its member.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <type_traits>

namespace aligntool {

/// One value of a document, and its path, as in "tables[3].dataSets[0]". What is missing or wrong is noted
/// and reads as nothing, so that the reading goes on. Copies are cheap and mean the same value.
class JsonReader
{
public:
    /// The whole document. `errors` is the caller's and outlives all readers.
    JsonReader(const QJsonValue &value, QStringList &errors) : JsonReader(value, QString(), errors) {}

    [[nodiscard]] bool isMissing() const { return Value.isUndefined(); }

    /// A member of an object.
    [[nodiscard]] JsonReader member(const QString &name) const;
    /// The entries of a member that is a list of at most `most`; `what` names them in the error.
    [[nodiscard]] QList<JsonReader> entries(const QString &name, std::size_t most, const QString &what) const;
    /// A text member, or the bytes of the member "<name>Hex" when that is there; at most `most` bytes.
    [[nodiscard]] QByteArray bytes(const QString &name, std::size_t most) const;
    [[nodiscard]] QString text(const QString &name) const;

    /// Takes a number that is a member: of 64 bits from a text, else from a number.
    template <typename Integer>
    void Take(const QString &name, Integer &number) const
    {
        member(name).TakeNumber(number);
    }
    /// Takes all numbers of a list, which has as many.
    template <typename Integer>
    void TakeAll(std::initializer_list<Integer *> numbers) const
    {
        const QList<JsonReader> values = list(numbers.size());
        qsizetype i = 0;
        for (Integer *const number : numbers) {
            if (i < values.size())
                values[i++].TakeNumber(*number);
        }
    }

    /// Members that may be there and tell nothing.
    void Ignore(std::initializer_list<QString> names) const;
    /// Notes every member that nobody asked for: most likely it is misspelt.
    void RefuseOthers() const;

    void Note(const QString &what) const;

private:
    JsonReader(const QJsonValue &value, const QString &path, QStringList &errors)
        : Value(value), Path(path), Errors(&errors), Known(std::make_shared<QSet<QString>>())
    {}

    template <typename Integer>
    void TakeNumber(Integer &number) const
    {
        number = static_cast<Integer>(sizeof(Integer) == sizeof(quint64)
                                          ? numberOf64Bits()
                                          : numberUpTo(std::numeric_limits<Integer>::max()));
    }
    [[nodiscard]] quint64 numberOf64Bits() const;
    [[nodiscard]] quint64 numberUpTo(quint64 most) const;
    [[nodiscard]] QList<JsonReader> list(std::size_t size) const;

    QJsonValue Value;
    QString Path;
    QStringList *Errors;
    std::shared_ptr<QSet<QString>> Known; // members that somebody asked for
};

} // namespace aligntool
