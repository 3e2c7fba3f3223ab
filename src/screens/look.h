#pragma once

namespace bellmark {

enum class Appearance { AsDesktop, Light, Dark };

/// The application's style, palette, style sheet and number language. One lives as long as the application.
class Look {
  public:
    /// Notes whether the desktop is dark. Call after the application was made, and before anything is shown.
    Look();

    void Show(Appearance appearance);
    Appearance Shown() const { return appearance_; }
    bool IsDark() const;

  private:
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
