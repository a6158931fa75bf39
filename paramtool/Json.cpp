#include "paramtool/Json.h"

#include "devices/QtText.h"

namespace loader::paramtool {

namespace {

// A page's name in reports, whatever their language.
constexpr std::array<const char*, Pages> PageKeys{"channels", "operations", "general", "display",
                                                  "network",  "mail",       "unshown", "recorder"};

} // namespace

QString Q(std::u16string_view text) {
  return ToQt(text);
}

QString Q(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QJsonObject JsonOf(const ParameterRef& ref, std::u16string_view name, Page page) {
  return {{QStringLiteral("key"), Q(KeyOf(ref))},
          {QStringLiteral("section"), Q(ref.section)},
          {QStringLiteral("item"), ref.item},
          {QStringLiteral("tag"), Q(ref.tag)},
          {QStringLiteral("name"), Q(name)},
          {QStringLiteral("page"), QLatin1String(PageKeys.at(static_cast<std::size_t>(page)))}};
}

QJsonObject JsonOf(const ParameterRef& ref, Language language) {
  return JsonOf(ref, NameOf(ref, language), PageOf(ref));
}

QJsonValue JsonValueOf(const StoredValue& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  return text != nullptr ? QJsonValue(Q(*text)) : QJsonValue(std::get<std::int16_t>(value));
}

QJsonValue JsonValueOf(const ParameterRef& ref, const StoredValue& value, const Speech& speech) {
  return !speech.secrets && IsSecret(ref) ? QJsonValue(QJsonValue::Null) : JsonValueOf(value);
}

} // namespace loader::paramtool
