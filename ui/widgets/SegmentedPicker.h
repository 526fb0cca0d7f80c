#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

namespace ui {

class Segment;

// A few choices side by side, of which one is chosen, or none.
class SegmentedPicker final : public QWidget {
  public:
    // `onChoose` is called with the index that the user chooses.
    SegmentedPicker(const QString& name, const QStringList& options,
                    const std::function<void(std::size_t)>& onChoose);

    void setChosen(std::optional<std::size_t> index);

  private:
    std::vector<Segment*> segments_;
};

}  // namespace ui
