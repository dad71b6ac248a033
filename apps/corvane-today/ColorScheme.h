// Light or dark as the desktop wishes, followed while the program runs.
#pragma once

#include <functional>

#include <QDBusVariant>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

namespace corvane {

/// Asks the desktop portal (org.freedesktop.portal.Settings, "org.freedesktop.appearance" "color-scheme") and
/// waits for nothing. Without a portal it stays as it began.
class ColorScheme : public QObject {
    Q_OBJECT
  public:
    enum class Choice { kAuto, kLight, kDark };

    /// @param isDark  until the desktop has answered
    explicit ColorScheme(bool isDark, QObject* parent = nullptr);

    /// Connects to the portal.
    void follow();

    bool isDark() const;
    Choice choice() const { return choice_; }
    /// What the user wants whatever the desktop says.
    void setChoice(Choice choice);
    /// What the desktop said last.
    bool isDesktopDark() const { return isDesktopDark_; }

  Q_SIGNALS:
    void changed();

  private Q_SLOTS:
    void takeChange(const QString& nameSpace, const QString& key, const QDBusVariant& value);

  private:
    void takeValue(const QVariant& value);
    void update(const std::function<void()>& change);

    bool isDesktopDark_;
    Choice choice_ = Choice::kAuto;
};

}  // namespace corvane
