// The signals that ask the program to end, as an event of the event loop: what is being typed can be kept.
#pragma once

#include <memory>

#include <QObject>
#include <QSocketNotifier>

#include "platform/foundation/FileDescriptor.h"

namespace corvane {

/// Listens while it lives; one at a time. The second signal of a kind ends the program at once.
class TerminationSignals : public QObject {
    Q_OBJECT
  public:
    TerminationSignals();
    ~TerminationSignals() override;

  Q_SIGNALS:
    void received();

  private:
    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace corvane
