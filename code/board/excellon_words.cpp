// SPDX-License-Identifier: MIT
#include "excellon_words.h"

#include <charconv>
#include <cmath>

namespace brox {

QString shown(std::string_view text)
{
    QString told = QString::fromUtf8(text.data(), qMin<qsizetype>(qsizetype(text.size()), 40));
    for (QChar& letter : told) {
        letter = letter.isPrint() ? letter : QChar('?');
    }
    return '"' + told + '"';
}

std::optional<double> toNumber(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    const bool ok = error == std::errc() && stop == end && std::isfinite(value);
    return ok ? std::optional(value) : std::nullopt;
}

} // namespace brox
