// A desktop's settings portal on the session bus of the tests, whose colour scheme the test decides.
#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariant>

namespace corvane {

class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
  public:
    /// Takes the portal's name. @param scheme  the answer to whoever reads "color-scheme"
    SettingsPortal(const QDBusConnection& bus, QVariant scheme);
    ~SettingsPortal() override;

    /// Tells everybody of a new value; the colour scheme's, unless the test says otherwise.
    void tell(const QVariant& value, const char* key = "color-scheme",
              const char* nameSpace = "org.freedesktop.appearance");
    int readings() const { return readings_; }

  public Q_SLOTS:
    QDBusVariant Read(const QString& nameSpace, const QString& key);

  Q_SIGNALS:
    void SettingChanged(const QString& nameSpace, const QString& key, const QDBusVariant& value);

  private:
    QDBusConnection bus_;
    QVariant scheme_;
    int readings_ = 0;
};

}  // namespace corvane
