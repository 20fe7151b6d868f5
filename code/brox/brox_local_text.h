// SPDX-License-Identifier: MIT
#ifndef BROX_LOCAL_TEXT_H
#define BROX_LOCAL_TEXT_H

#include <QString>
#include <QStringConverter>
#include <QVarLengthArray>

#include <charconv>
#include <limits>

/** A text for the host in its 8-bit encoding, put together piece by piece.
 *
 * Strings become the bytes of QString::toLocal8Bit. These texts are made for each hole of a job,
 * so one of usual length lies on the stack.
 */
class LocalText
{
public:
    template <std::size_t Size>
    LocalText& operator<<(const char (&literal)[Size])
    {
        mChars.append(literal, Size - 1);
        return *this;
    }

    LocalText& operator<<(int number)
    {
        char digits[std::numeric_limits<int>::digits10 + 2]; // one more digit, and the sign
        const char* end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
        mChars.append(digits, end - digits);
        return *this;
    }

    LocalText& operator<<(const QString& text)
    {
        QStringEncoder encoder(QStringEncoder::System, QStringEncoder::Flag::Stateless);
        const auto size = mChars.size();
        mChars.resize(size + encoder.requiredSpace(text.size()));
        mChars.resize(encoder.appendToBuffer(mChars.data() + size, text) - mChars.data());
        return *this;
    }

    /** Valid until the text changes. */
    const char* data()
    {
        mChars.append('\0');
        mChars.removeLast();
        return mChars.constData();
    }

private:
    QVarLengthArray<char, 512> mChars;
};

#endif
