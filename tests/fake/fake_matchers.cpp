// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "fake_matchers.hpp"

namespace fake {

using ::testing::AllOf;
using ::testing::Field;

void PrintTo(const LogLine &line, std::ostream *out)
{
    *out << line.file << ":" << line.line << " (" << line.module << ", " << line.category << ", "
         << line.level << ") \"" << line.text << "\" from \"" << line.format << "\"";
}

LineMatcher isLineOf(const char *file, Shape shape, const std::string &format,
                     const std::string &text)
{
    return AllOf(Field("module", &LogLine::module, shape.module),
                 Field("category", &LogLine::category, shape.category),
                 Field("level", &LogLine::level, shape.level),
                 Field("line", &LogLine::line, ::testing::Gt(0U)),
                 Field("file", &LogLine::file, file), Field("format", &LogLine::format, format),
                 Field("text", &LogLine::text, text));
}

LineMatcher isNullLine(const std::string &parameter, const std::string &function, const char *file)
{
    const std::string head = "Pointer " + parameter + " is Null, ";
    const auto printsOwnLine = [=](const LogLine &line) {
        return line.text ==
               head + "File:" + file + " Func:" + function + " Line:" + std::to_string(line.line);
    };
    return AllOf(Field("module", &LogLine::module, nullPointer.module),
                 Field("category", &LogLine::category, nullPointer.category),
                 Field("level", &LogLine::level, nullPointer.level),
                 Field("line", &LogLine::line, ::testing::Gt(0U)),
                 Field("file", &LogLine::file, file),
                 Field("format", &LogLine::format, head + "File:%s Func:%s Line:%d"),
                 ::testing::Truly(printsOwnLine));
}

} // namespace fake
