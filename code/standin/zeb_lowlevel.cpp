// SPDX-License-Identifier: MIT
#pragma GCC visibility push(default)
#include "zeb_lowlevel.h"
#pragma GCC visibility pop

#include "operation.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <QTranslator>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <set>
#include <string>
#include <unistd.h>
#include <unordered_set>

using namespace brox;

namespace {

const Operation logWrite("zeb__log_write");
const Operation logStatusCheck("zeb__log_status_check");
const Operation errSound("zeb__err_sound");
const Operation nlst("zeb__nls_nlst");
const Operation memCalloc("zeb__mem_calloc");
const Operation memFree("zeb__mem_free");
const Operation strDup("zeb__str_dup_fn");
const Operation strNcpy("zeb__str_ncpy");
const Operation getDir("zeb__sarn_get_dir");
const Operation getEpath("zeb__sarn_get_epath");
const Operation getUnitsStr("zeb__sarn_get_Units_str");

struct State
{
    standin_log_sink sink = nullptr;
    void* context = nullptr;
    int errorSounds = 0;
    QByteArray dataDir; ///< null when there is none
    QByteArray resourceDir;
    standin_path_hook pathHook = nullptr;
    void* pathContext = nullptr;
    std::unique_ptr<QTranslator> catalogue;
};

State state;
const AtReset reset([] { state = {}; });

/** Every text that was ever given out; callers may keep the pointers. */
std::set<QByteArray> texts;

/** Addresses of live blocks, inverted: a leak checker must not take the book for a user. */
std::unordered_set<uintptr_t> liveBlocks;

uintptr_t entryOf(const void* block)
{
    return ~reinterpret_cast<uintptr_t>(block);
}

void* allocate(size_t count, size_t size)
{
    if (size != 0 && count > PTRDIFF_MAX / size) {
        return nullptr;
    }
    void* block = count != 0 && size != 0 ? calloc(count, size) : calloc(1, 1);
    if (!block) {
        return nullptr;
    }
    try {
        liveBlocks.insert(entryOf(block));
    } catch (const std::exception&) {
        free(block);
        return nullptr;
    }
    return block;
}

void writeEntry(const char* level, const std::string& text)
{
    if (state.sink) {
        state.sink(level, QString::fromLocal8Bit(text.c_str()).toUtf8().constData(), state.context);
        return;
    }
    const bool complete = !text.empty() && text.back() == '\n';
    fprintf(stderr, "%s: %s%s", level, text.c_str(), complete ? "" : "\n");
}

QByteArray toLocal8Bit(const char* utf8)
{
    return utf8 ? QString::fromUtf8(utf8).toLocal8Bit() : QByteArray();
}

/** The printf conversions of a text, as far as they decide which arguments are read. */
QStringList conversions(const QString& text)
{
    static const QRegularExpression conversion(
        "%[-+ #0-9.]*(?:%|([hlLqjzt*.$0-9]*)(.?))", QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    for (const auto& match : conversion.globalMatch(text)) {
        if (match.hasCaptured(1)) {
            found.append(match.captured(1) + match.captured(2));
        }
    }
    return found;
}

/** The text of a key, in the language of the catalogue if it has it; a text that is no key. */
const char* textOf(const char* key, bool isTranslated = true)
{
    static const QRegularExpression notOfNumber("[^0-9]");
    const QString separator = "@$@#";
    QString text = QString::fromLocal8Bit(key);
    const QStringList fields = text.split(separator);
    if (fields.size() > 4 && fields[0].isEmpty() && !fields[3].isEmpty()
        && !fields[3].contains(notOfNumber)) {
        text = text.section(separator, 4);
        const QString own = state.catalogue && isTranslated
            ? state.catalogue->translate(fields[1].toUtf8(), text.toUtf8(), fields[3].toUtf8())
            : QString();
        // Somebody fills in the arguments of the default text: a translation must want the same.
        if (!own.isEmpty() && conversions(own) == conversions(text)) {
            text = own;
        }
    }
    return texts.insert(text.toLocal8Bit()).first->constData();
}

/** Where a file of the data folder is; null if there is no place for it. */
QByteArray pathOf(const char* name)
{
    if (state.pathHook) {
        const QByteArray asked = QString::fromLocal8Bit(name).toUtf8();
        return toLocal8Bit(state.pathHook(asked.constData(), state.pathContext));
    }
    return state.dataDir.isNull() ? QByteArray() : state.dataDir + '/' + name;
}

} // namespace

int zeb__log_write(const char* level, const char* format, ...)
{
    if (const int status = logWrite.enter()) {
        return status;
    }
    if (!level || !format) {
        return BadArgument;
    }
    const char* text = textOf(format);

    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = vsnprintf(nullptr, 0, text, arguments);
    va_end(arguments);
    std::string finished = text;
    if (length >= 0) {
        finished.resize(size_t(length) + 1);
        vsnprintf(finished.data(), finished.size(), text, again);
        finished.pop_back();
    }
    va_end(again);

    writeEntry(level, finished);
    return 0;
}

int zeb__log_status_check(const char* file, int line)
{
    if (const int status = logStatusCheck.enter()) {
        return status;
    }
    writeEntry("STATUS", std::string(file ? file : "") + " " + std::to_string(line));
    return 0;
}

int zeb__err_sound(void)
{
    if (const int status = errSound.enter()) {
        return status;
    }
    ++state.errorSounds;
    if (isatty(STDERR_FILENO)) {
        fputc('\a', stderr);
    }
    return 0;
}

const char* zeb__nls_nlst(const char* key)
{
    const bool isTranslated = nlst.enter() == 0;
    return key ? textOf(key, isTranslated) : "";
}

void* zeb__mem_calloc(size_t count, size_t size, int, const char*, int)
{
    return memCalloc.enter() == 0 ? allocate(count, size) : nullptr;
}

int zeb__mem_free(void* block, int, const char* file, int line)
{
    // A call that fails releases the block too: nobody would come back for it.
    const int status = memFree.enter();
    if (block && liveBlocks.erase(entryOf(block)) == 0) {
        writeEntry("INTERNAL",
            std::string("No block of the host's is freed at ") + (file ? file : "") + " "
                + std::to_string(line));
        return BadArgument;
    }
    free(block);
    return status;
}

char* zeb__str_dup_fn(const char* text, const char*, int)
{
    if (strDup.enter() != 0 || !text) {
        return nullptr;
    }
    const size_t size = strlen(text) + 1;
    char* copy = static_cast<char*>(allocate(size, 1));
    if (copy) {
        memcpy(copy, text, size);
    }
    return copy;
}

char* zeb__str_ncpy(char* dest, const char* source, int limit)
{
    if (strNcpy.enter() != 0 || !dest || limit < 0) {
        return nullptr;
    }
    const size_t length = source ? strnlen(source, size_t(limit)) : 0;
    if (length > 0) {
        memcpy(dest, source, length);
    }
    dest[length] = '\0';
    return dest;
}

int zeb__sarn_get_dir(int location, const char* name, char* path, int size, bool* found)
{
    if (const int status = getDir.enter()) {
        return status;
    }
    constexpr int dataFolder = 2;
    if (location != dataFolder || !name || !path || !found) {
        return BadArgument;
    }
    const QByteArray full = pathOf(name);
    if (full.isNull()) {
        return NoFolder;
    }
    if (full.size() > size) {
        return PathTooLong;
    }
    memcpy(path, full.constData(), size_t(full.size()) + 1);
    *found = QFileInfo::exists(QString::fromLocal8Bit(full));
    return 0;
}

const char* zeb__sarn_get_epath(void)
{
    return getEpath.enter() == 0 ? state.resourceDir.constData() : "";
}

const char* zeb__sarn_get_Units_str(zeb_units_enum units)
{
    if (getUnitsStr.enter() != 0) {
        return "";
    }
    switch (units) {
    case ZEB_UNITS_INCHES:
        return "Inches";
    case ZEB_UNITS_MILLIMETERS:
        return "Millimeters";
    case ZEB_UNITS_MILS:
        return "Mils";
    case ZEB_UNITS_MICRONS:
        return "Microns";
    }
    return "";
}

void standin_set_data_dir(const char* path)
{
    state.dataDir = toLocal8Bit(path);
}

void standin_set_path_hook(standin_path_hook hook, void* context)
{
    state.pathHook = hook;
    state.pathContext = context;
}

void standin_set_resource_dir(const char* path)
{
    state.resourceDir = toLocal8Bit(path);
}

void standin_set_log_sink(standin_log_sink sink, void* context)
{
    state.sink = sink;
    state.context = context;
}

bool standin_set_catalogue(const char* path)
{
    state.catalogue.reset();
    if (!path) {
        return true;
    }
    auto loaded = std::make_unique<QTranslator>();
    if (!loaded->load(QString::fromUtf8(path))) {
        const Uncounted quiet;
        zeb__log_write("ERROR", "Can't read the catalogue %s", toLocal8Bit(path).constData());
        return false;
    }
    state.catalogue = std::move(loaded);
    return true;
}

int standin_error_sounds(void)
{
    return state.errorSounds;
}

size_t standin_live_blocks(void)
{
    return liveBlocks.size();
}
