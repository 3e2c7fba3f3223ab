#pragma once

#include <QObject>
#include <functional>

namespace bellmark {

enum class Appearance { AsDesktop, Light, Dark };

/// The application's style, palette, style sheet and number language. One lives as long as the application. It follows
/// the desktop when that turns dark or light.
class Look : public QObject {
  public:
    /// Call after the application was made, and before anything is shown. desktopIsDark: asked now, and when the
    /// desktop has changed its looks.
    explicit Look(std::function<bool()> desktopIsDark = HasDarkDesktop);

    void Show(Appearance appearance);
    Appearance Shown() const { return appearance_; }
    bool IsDark() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    static bool HasDarkDesktop();
    void MeetDesktop();

    std::function<bool()> askDesktop_;

    bool isChanging_ = false;  ///< the look itself sets the palette
    bool desktopIsDark_ = false;
    Appearance appearance_ = Appearance::AsDesktop;
};

/// Shows the light look during its lifetime, as paper needs it.
class LightLook {
  public:
    explicit LightLook(Look& look) : look_(look), before_(look.Shown()) {
        if (look_.IsDark()) look_.Show(Appearance::Light);
    }
    ~LightLook() {
        if (look_.Shown() != before_) look_.Show(before_);
    }
    LightLook(const LightLook&) = delete;
    LightLook& operator=(const LightLook&) = delete;

  private:
    Look& look_;
    Appearance before_;
};

}  // namespace bellmark
