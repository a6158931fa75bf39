#include "paramtool/Wildcards.h"

namespace loader::paramtool {

QStringList FilesMeantBy(const QString& word) {
  return FilesByWildcards(word);
}

} // namespace loader::paramtool
