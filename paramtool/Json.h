// The forms that the JSON reports share. docs/paramtool.md describes them.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include "companion/Parameters.h"

namespace loader::paramtool {

// Version of the form of all reports: it changes when a reader of the old one would go wrong.
constexpr int ReportForm = 1;

[[nodiscard]] QString Q(std::u16string_view text);
[[nodiscard]] QString Q(std::string_view utf8);

// {"key", "section", "item", "tag", "name", "page"}: item from 0, as in the key.
[[nodiscard]] QJsonObject JsonOf(const ParameterRef& ref, Language language);
// The same for a parameter of a set-up that is not in force.
[[nodiscard]] QJsonObject JsonOf(const ParameterRef& ref, std::u16string_view name, Page page);
// A number or a string.
[[nodiscard]] QJsonValue JsonValueOf(const StoredValue& value);
// A number or a string; null for a secret that is hidden.
[[nodiscard]] QJsonValue JsonValueOf(const ParameterRef& ref, const StoredValue& value, const Speech& speech);

} // namespace loader::paramtool
