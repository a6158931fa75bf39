// The rows of a list. One reset for a whole new list, and texts are made only for the rows that are looked
// at: some lists have 300 rows and a page has dozens of lists.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace loader {

class ListModel final : public QAbstractListModel {
public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] const std::vector<std::u16string>& Items() const { return items_; }
  void SetItems(const std::vector<std::u16string>& items);
  // Of the longest row, in half-width characters.
  [[nodiscard]] int LongestRow() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
  std::vector<std::u16string> items_;
};

} // namespace loader
