// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change, checked and made in a copy of the configuration. */
#include <algorithm>
#include <cstring>
#include <vector>

#include "settings/change.hpp"
#include "settings/detail/checks.hpp"
#include "settings/detail/rules.hpp"

namespace bmc::settings {

namespace {

/* Parts of a section in the order of their change bits, in which they are checked. */
struct Row {
    const Setting *setting;
    const Part *part;
};

std::vector<Row> rowsOf(Section section)
{
    std::vector<Row> rows;
    for (const Setting &setting : settingsOf(section)) {
        for (const Part &part : setting.parts) {
            rows.push_back({&setting, &part});
        }
    }
    std::ranges::sort(rows, {},
                      [](const Row &row) { return std::pair(row.part->word, row.part->bit); });
    return rows;
}

void checkBits(const Edit &edit, const std::vector<Row> &rows)
{
    ChangeBits unknown = edit.bits;
    for (const Row &row : rows) {
        unknown.at(row.part->word) &= ~row.part->bit;
    }
    require((unknown[0] | unknown[1]) == 0, Result::unknownField, infoOf(edit.section).title);
}

bool takesValue(const Edit &edit, const Part &part)
{
    return (edit.bits.at(part.word) & part.bit) != 0;
}

void checkParts(const Edit &edit, const std::vector<Row> &rows)
{
    for (const auto &[setting, part] : rows) {
        if (takesValue(edit, *part) &&
            !isValid(*setting, *part, edit.request.data() + part->request)) {
            Refusal refusal(part->refusal, part->name);
            refusal.blame(edit.section, edit.port, setting);
            throw refusal;
        }
    }
}

void copy(const Edit &edit, const Row &row, std::uint8_t *entry)
{
    const auto &[setting, part] = row;
    const std::uint8_t *from = edit.request.data() + part->request;
    std::size_t size = std::min(part->requestSize, part->size);
    if (setting->kind->isCounted) {
        size = *from++;
    }
    std::memset(entry + part->record, 0, part->size);
    if (takesValue(edit, *part)) {
        std::memcpy(entry + part->record, from, std::min(size, part->size));
    }
}

/* A domain or a name ends where its text ends. */
void endText(const Row &row, std::uint8_t *entry)
{
    const Shape shape = row.setting->kind->shape;
    if (shape == Shape::name || shape == Shape::domain) {
        auto *text = reinterpret_cast<char *>(entry + row.part->record);
        const std::size_t length = strnlen(text, row.part->size);
        std::memset(text + length, 0, row.part->size - length);
    }
}

void make(Configuration &configuration, const Edit &edit, const std::vector<Row> &rows)
{
    std::uint8_t *entry = entryOf(configuration, edit.section, edit.port);
    for (const Row &row : rows) {
        if (isSelected(edit, *row.part)) {
            copy(edit, row, entry);
            endText(row, entry);
        }
    }
}

/* The section's edits that ask for anything, by port. */
std::vector<const Edit *> editsOf(const Change &change, Section section)
{
    std::vector<const Edit *> edits;
    for (const Edit &edit : change) {
        if (edit.section == section && !isEmpty(edit)) {
            edits.push_back(&edit);
        }
    }
    std::ranges::stable_sort(edits, {}, [](const Edit *edit) { return edit->port; });
    return edits;
}

void makeSection(const SectionInfo &info, const Change &change, Attempt &attempt)
{
    const std::vector<const Edit *> edits = editsOf(change, info.section);
    if (edits.empty()) {
        return;
    }

    const SectionRules &rules = rulesOf(info.section);
    const std::vector<Row> rows = rowsOf(info.section);
    for (const Edit *edit : edits) {
        const unsigned port = info.portCount == 0 ? NW_PORT_COUNT : edit->port;
        blaming(info.section, port, [&] {
            checkPort(info, *edit, attempt.after.state);
            checkBits(*edit, rows);
            rules.before(*edit, attempt);
            checkParts(*edit, rows);
            make(attempt.after, *edit, rows);
            rules.after(*edit, attempt);
        });
    }
    blaming(info.section, NW_PORT_COUNT, [&] { rules.atEnd(attempt); });
}

/* Names the setting that the code is due to, where the refusal doesn't know. */
void findCause(Refusal &refusal, const Change &change)
{
    const auto cause = blamed(refusal.code(), change);
    if (cause && refusal.setting() == nullptr) {
        refusal.blame(cause->setting->section, cause->port, cause->setting);
    }
}

} // namespace

Configuration edited(const Configuration &present, const Change &change,
                     const std::optional<NW_WIFI_ADDR_S> &wireless)
{
    Attempt attempt{present, present, wireless};
    try {
        for (const SectionInfo &info : sections()) {
            makeSection(info, change, attempt);
        }
        if (attempt.hasNewMode) {
            blaming(Section::mode, NW_PORT_COUNT, [&] { checkSegments(attempt, allChecks()); });
        }
    } catch (Refusal &refusal) {
        findCause(refusal, change);
        throw;
    }
    return attempt.after;
}

} // namespace bmc::settings
