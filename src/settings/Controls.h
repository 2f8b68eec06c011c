#pragma once

#include <algorithm>
#include <functional>
#include <string>

namespace veltra {

// The state of the controls a settings screen shows, as the screen's logic
// sees it: the view layer binds to these values and writes the user's
// changes back before it calls the screen's action.

struct Switch {
    bool on = false;
};

// A slider keeps its value within its range, as a toolkit slider does.
class Slider {
public:
    Slider(float minimum, float maximum) : minimum_(minimum), maximum_(maximum), value_(minimum) {}

    float value() const { return value_; }
    float minimum() const { return minimum_; }
    float maximum() const { return maximum_; }
    void setValue(float value) { value_ = std::clamp(value, minimum_, maximum_); }

private:
    float minimum_, maximum_, value_;
};

struct SegmentedControl {
    int selectedSegmentIndex = 0;
};

struct Label {
    std::string text;
};

// A size that the layout gives a view, in points.
struct LayoutConstraint {
    double constant = 0.0;
};

// The window title's face when the app's own title font is installed.
struct TitleStyle {
    std::string family; // empty: the bold system font
    double pointSize = 0;
    double white = 1.0; // text colour, grey level

    friend bool operator==(const TitleStyle&, const TitleStyle&) = default;
};

// A message with one button that only dismisses it.
struct Alert {
    std::string title, message, dismissTitle;
};

// Runs a task later on the main thread, after the current work returns.
using MainQueue = std::function<void(std::function<void()>)>;

} // namespace veltra
