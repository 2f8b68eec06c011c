#pragma once

namespace veltra {

struct Point {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Rect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    // Minimum edges inclusive, maximum edges exclusive, so that two rectangles
    // sharing an edge never both contain a point on it.
    bool contains(Point p) const
    {
        return p.x >= x && p.x < x + width && p.y >= y && p.y < y + height;
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

// Red, green, blue and alpha in device RGB, each 0 to 1.
struct Color {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    friend bool operator==(const Color&, const Color&) = default;
};

} // namespace veltra
