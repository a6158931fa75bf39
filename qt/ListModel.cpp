#include "qt/ListModel.h"

#include <algorithm>

#include "core/Text.h"
#include "qt/QtText.h"

namespace loader {

void ListModel::SetItems(const std::vector<std::u16string>& items) {
  beginResetModel();
  items_ = items;
  endResetModel();
}

int ListModel::LongestRow() const {
  std::size_t longest = 0;
  for (const std::u16string& item : items_) {
    longest = std::max(longest, CodePageLength(item));
  }
  return static_cast<int>(longest);
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount() || role != Qt::DisplayRole) {
    return {};
  }
  return ToQt(items_[static_cast<std::size_t>(index.row())]);
}

} // namespace loader
