#include "platform/linux/SelectionRead.h"

#include <cstring>
#include <utility>
#include <vector>

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kProgressTimeout = 1s;
constexpr auto kTotalTimeout = 5s;

/// A program offers a few dozen targets; whoever claims thousands is not worth the memory.
constexpr qint64 kMaxTargetBytes = 1024 * sizeof(xcb_atom_t);

/// What is fetched of a property before its full length is known.
constexpr qint64 kFirstFetchBytes = 256 * 1024;

std::uint32_t inWords(qint64 bytes) {
  return static_cast<std::uint32_t>((bytes + 3) / 4);
}

}  // namespace

SelectionRead::SelectionRead(xcb_connection_t* connection, AtomTable& atoms,
                             const PasteboardReadPolicy& policy, xcb_timestamp_t time, TimePoint now)
    : connection_(connection),
      atoms_(atoms),
      time_(time),
      window_(xcb_generate_id(connection)),
      plan_(policy),
      progressDeadline_(now + kProgressTimeout),
      totalDeadline_(now + kTotalTimeout) {
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, rootWindow(connection_), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  convert(QStringLiteral("TARGETS"));
}

SelectionRead::~SelectionRead() {
  xcb_destroy_window(connection_, window_);
}

void SelectionRead::convert(const QString& target) {
  property_ = atoms_.atom(QStringLiteral("_NIMBREL_SELECTION_%1").arg(conversions_++));
  target_ = atoms_.atom(target);
  incremental_ = false;
  collected_.clear();
  xcb_convert_selection(connection_, window_, atoms_.atom(QStringLiteral("CLIPBOARD")), target_, property_,
                        time_);
}

void SelectionRead::proceed() {
  const auto step = plan_.nextStep();
  if (!step) return end(State::finished);
  convert(step->target);
}

void SelectionRead::handle(const xcb_selection_notify_event_t& event, TimePoint now) {
  const bool refused = event.property == XCB_ATOM_NONE;
  // Answers to earlier questions, or to none.
  if (event.target != target_ || (!refused && event.property != property_)) return;
  if (state_ != State::reading || incremental_) return;
  progressDeadline_ = now + kProgressTimeout;
  if (!targetsAnswered_) {
    targetsAnswered_ = true;
    if (refused)
      plan_.setTargets(std::nullopt);
    else
      takeTargets();
    return state_ == State::reading ? proceed() : void();
  }
  if (!refused) return takeValue();
  plan_.refuse();
  proceed();
}

void SelectionRead::handle(const xcb_property_notify_event_t& event, TimePoint now) {
  const bool newChunk = event.state == XCB_PROPERTY_NEW_VALUE && event.atom == property_;
  if (state_ != State::reading || !incremental_ || !newChunk) return;
  progressDeadline_ = now + kProgressTimeout;
  takeChunk();
}

void SelectionRead::expire(TimePoint now) {
  if (state_ == State::reading && now >= deadline())
    end(plan_.hasContent() ? State::finished : State::failed);
}

void SelectionRead::takeTargets() {
  const auto property = takeProperty(kMaxTargetBytes);
  // Without the whole list nobody knows whether the content is marked; then it is left alone.
  if (!property || property->format != 32 || property->exceedsBudget || isIncremental(*property))
    return end(State::failed);
  std::vector<xcb_atom_t> targets(static_cast<std::size_t>(property->bytes.size()) / sizeof(xcb_atom_t));
  std::memcpy(targets.data(), property->bytes.constData(), targets.size() * sizeof(xcb_atom_t));
  plan_.setTargets(atoms_.names(targets));
}

void SelectionRead::takeValue() {
  const auto step = plan_.nextStep();
  if (!step) return end(State::finished);
  const auto property = takeProperty(step->budget);
  if (property && isIncremental(*property)) return beginIncremental(property->bytes);
  if (!property || property->format != 8) {
    plan_.refuse();
    return proceed();
  }
  if (property->exceedsBudget)
    plan_.reportOversized();
  else
    plan_.accept(property->bytes);
  proceed();
}

void SelectionRead::beginIncremental(const QByteArray& announcedSize) {
  // The announced size is a lower bound (ICCCM 2.7.2): what is too large by its own account is not even
  // begun.
  std::uint32_t announced = 0;
  if (announcedSize.size() >= static_cast<qsizetype>(sizeof announced))
    std::memcpy(&announced, announcedSize.constData(), sizeof announced);
  if (announced > plan_.nextStep()->budget) {
    plan_.reportOversized();
    return proceed();
  }
  incremental_ = true;
}

void SelectionRead::takeChunk() {
  const qint64 budget = plan_.nextStep()->budget;
  const auto chunk = takeProperty(budget - collected_.size());
  if (!chunk) return;
  if (chunk->exceedsBudget) {
    plan_.reportOversized();
    return proceed();
  }
  if (!chunk->bytes.isEmpty()) {
    collected_ += chunk->bytes;
    return;
  }
  plan_.accept(std::exchange(collected_, {}));
  proceed();
}

bool SelectionRead::isIncremental(const Property& property) const {
  return property.type == atoms_.atom(QStringLiteral("INCR"));
}

std::optional<SelectionRead::Property> SelectionRead::takeProperty(qint64 budget) const {
  const auto fetch = [this](std::uint32_t offsetWords, std::uint32_t lengthWords, bool remove) {
    const auto cookie = xcb_get_property(connection_, remove, window_, property_, XCB_GET_PROPERTY_TYPE_ANY,
                                         offsetWords, lengthWords);
    return XcbPointer<xcb_get_property_reply_t>(xcb_get_property_reply(connection_, cookie, nullptr));
  };
  const auto bytesOf = [](const xcb_get_property_reply_t& reply) {
    return QByteArray(static_cast<const char*>(xcb_get_property_value(&reply)),
                      xcb_get_property_value_length(&reply));
  };
  // Deleting takes effect only when nothing is left, which is what a protocol between strangers needs: a
  // value that is over the budget stays with the server and goes with the window.
  const auto head = fetch(0, inWords(std::min(kFirstFetchBytes, std::max<qint64>(budget, 4))), true);
  if (!head || head->type == XCB_ATOM_NONE) return std::nullopt;
  Property property{head->type, head->format, bytesOf(*head), false};
  if (head->bytes_after > 0 && property.bytes.size() + qint64{head->bytes_after} > budget) {
    return Property{head->type, head->format, {}, true};
  }
  if (head->bytes_after > 0) {
    const auto tail = fetch(inWords(property.bytes.size()), inWords(head->bytes_after), true);
    if (!tail) return std::nullopt;
    property.bytes += bytesOf(*tail);
  }
  property.exceedsBudget = property.bytes.size() > budget;
  return property;
}

}  // namespace nimbrel
