#pragma once

#include <QWidget>

#include "capture/model/ClipFilter.h"

namespace nimbrel {

/// The filters that are set, by application and by collection, each as a chip with a button that clears it.
/// Takes no room while none is set.
class FilterChips final : public QWidget {
  Q_OBJECT

 public:
  explicit FilterChips(QWidget* parent);

  void setFilter(const ClipFilter& filter);

 Q_SIGNALS:
  void appCleared();
  void collectionCleared();

 private:
  class Chip;

  Chip* app_;
  Chip* collection_;
};

}  // namespace nimbrel
