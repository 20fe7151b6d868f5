// SPDX-License-Identifier: MIT
#include "texts.h"

#pragma GCC visibility push(default)
#include "zeb_lowlevel.h"
#pragma GCC visibility pop

#include "operation.h"

#include <QFile>
#include <QString>
#include <QTranslator>
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

using namespace brox;

namespace {

constexpr std::string_view separator = "@$@#";

struct Key
{
    std::string module;
    std::string number;
    std::string text;
};

std::unique_ptr<QTranslator> catalogue;

/** Every text that was ever given out; callers may keep the pointers. */
std::set<std::string, std::less<>> texts;

const AtReset reset([] { catalogue.reset(); });
const Operation nlst("zeb__nls_nlst");

const char* stored(std::string_view text)
{
    auto it = texts.find(text);
    if (it == texts.end()) {
        it = texts.emplace(text).first;
    }
    return it->c_str();
}

std::optional<Key> parseKey(std::string_view key)
{
    std::string_view fields[4];
    for (int i = 0; i < 4; ++i) {
        if (!key.starts_with(separator)) {
            return std::nullopt;
        }
        key.remove_prefix(separator.size());
        fields[i] = i < 3 ? key.substr(0, key.find(separator)) : key;
        key.remove_prefix(fields[i].size());
    }
    const std::string_view number = fields[2];
    if (number.empty() || number.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return Key{std::string(fields[0]), std::string(number), std::string(fields[3])};
}

/** The printf conversions of a text, as far as they decide which arguments are read. */
std::string conversions(std::string_view text)
{
    std::string found;
    for (size_t at = text.find('%'); at < text.size(); at = text.find('%', at)) {
        at = std::min(text.find_first_not_of("-+ #0123456789.", at + 1), text.size());
        if (at < text.size() && text[at] == '%') {
            ++at;
            continue;
        }
        const size_t end =
            std::min(text.find_first_not_of("hlLqjzt*.$0123456789", at), text.size());
        found.append(text.substr(at, end - at));
        found += end < text.size() ? text[end] : '%';
        found += ' ';
        at = std::min(end + 1, text.size());
    }
    return found;
}

QByteArray translation(const Key& key)
{
    if (!catalogue) {
        return {};
    }
    const QByteArray text =
        catalogue->translate(key.module.c_str(), key.text.c_str(), key.number.c_str())
            .toLocal8Bit();
    // Somebody fills in the arguments of the default text, so the translation must want the same.
    const bool fits = conversions({text.data(), size_t(text.size())}) == conversions(key.text);
    return fits ? text : QByteArray();
}

} // namespace

const char* brox::textOfKey(const char* key)
{
    const std::optional<Key> parsed = parseKey(key);
    if (!parsed) {
        return nullptr;
    }
    const QByteArray translated = translation(*parsed);
    return stored(translated.isEmpty() ? std::string_view(parsed->text)
                                       : std::string_view(translated.data(), translated.size()));
}

const char* zeb__nls_nlst(const char* key)
{
    if (!key) {
        return "";
    }
    if (nlst.enter() != 0) {
        const std::optional<Key> parsed = parseKey(key);
        return stored(parsed ? std::string_view(parsed->text) : std::string_view(key));
    }
    const char* text = textOfKey(key);
    return text ? text : stored(key);
}

bool standin_set_catalogue(const char* path)
{
    catalogue.reset();
    if (!path) {
        return true;
    }
    auto loaded = std::make_unique<QTranslator>();
    if (!loaded->load(QString::fromUtf8(path))) {
        const Uncounted quiet;
        zeb__log_write("ERROR", "Can't read the catalogue %s",
            QString::fromUtf8(path).toLocal8Bit().constData());
        return false;
    }
    catalogue = std::move(loaded);
    return true;
}
