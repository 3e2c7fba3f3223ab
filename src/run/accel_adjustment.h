#pragma once

namespace bellmark {

struct CenterConfig;

inline constexpr double standardGravity = 9.80665;  ///< m/s²

double CelsiusToFahrenheit(double degrees);
double FahrenheitToCelsius(double degrees);

/// Derives the day's conversion of the accelerometer from its certificate and its daily readings. Slope and offset stay
/// as they were when the daily half-span is not above 0; the polynomial stays when it is 0, or when the certificate's
/// polynomial gives the same at both of its voltages.
void ComputeAccelAdjustment(CenterConfig& center);

}  // namespace bellmark
