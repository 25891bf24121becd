#include "tools/pictures/svg.h"

#include <map>
#include <sstream>

#include "tools/pictures/drawing.h"

namespace {

// The window around the screen, in pixels.
constexpr int margin = 10;
constexpr int title_bar = 24;
constexpr int corner = 8;

std::string window(int width, int height) {
    std::ostringstream out;
    out << "<rect width=\"" << width << "\" height=\"" << height << "\" rx=\"" << corner
        << "\" fill=\"#2b303b\"/>\n";
    int x = margin + 6;
    for (const char* colour : {"#bf616a", "#ebcb8b", "#a3be8c"}) {
        out << "<circle cx=\"" << x << "\" cy=\"" << title_bar / 2 + 1 << "\" r=\"5\" fill=\""
            << colour << "\"/>\n";
        x += 17;
    }
    return out.str();
}

// A window of the size of that screen, with these elements in it.
std::string document(const ScreenImage& size, const std::string& title,
                     const std::string& elements) {
    const int width = size.cols() * cell_width + 2 * margin;
    const int height = size.rows() * cell_height + title_bar + margin;
    std::ostringstream out;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" viewBox=\"0 0 " << width << " "
        << height << "\" width=\"" << width << "\" height=\"" << height
        << "\" font-family=\"'DejaVu Sans Mono','Liberation Mono',Menlo,Consolas,monospace\""
        << " font-size=\"13.3\">\n<title>" << escaped(title) << "</title>\n"
        << window(width, height) << "<g transform=\"translate(" << margin << " " << title_bar
        << ")\">\n"
        << elements << "</g>\n</svg>\n";
    return out.str();
}

std::string group(const std::string& attributes, const std::string& elements) {
    return attributes.empty() ? elements : "<g" + attributes + ">\n" + elements + "</g>\n";
}

// When something comes and goes, comes and goes again, in milliseconds.
using Times = std::vector<long>;

// The elements of all frames, each once.
using Appearances = std::map<Place, std::map<std::string, Times>>;

void add_appearance(Times& times, long from, long to) {
    if (!times.empty() && times.back() == from)
        times.back() = to;
    else
        times.insert(times.end(), {from, to});
}

// Puts the appearances of all elements into `all`, and returns how long the frames take.
long collect(const std::vector<Frame>& frames, Appearances& all) {
    long now = 0;
    for (const Frame& frame : frames) {
        const long end = now + frame.time.count();
        for (const auto& [place, elements] : drawing_of(frame.image)) {
            for (const std::string& element : elements)
                add_appearance(all[place][element], now, end);
        }
        now = end;
    }
    return now;
}

// The animations, one for all elements that come and go together.
class Animations {
  public:
    explicit Animations(long duration) : duration(duration) {}

    // The attributes of a group that is seen at these times; none if that is always.
    std::string attributes(const Times& times) {
        if (times == Times{0, duration}) return "";
        const size_t next = names.size();
        const std::string name = "t" + std::to_string(names.emplace(times, next).first->second);
        return " style=\"animation-name:" + name +
               (times.front() == 0 ? "\"" : "\" visibility=\"hidden\"");
    }

    std::string style() const {
        std::ostringstream out;
        out << "<style>\ng{animation:" << duration << "ms step-end infinite}\n"
            << "@media(prefers-reduced-motion:reduce){g{animation:none!important}}\n";
        for (const auto& [times, number] : names)
            out << "@keyframes t" << number << "{" << keyframes(times) << "}\n";
        out << "</style>\n";
        return out.str();
    }

  private:
    std::string keyframes(const Times& times) const {
        std::ostringstream out;
        bool visible = false;
        if (times.front() != 0) out << "0%{visibility:hidden}";
        for (const long time : times) {
            visible = !visible;
            if (time != duration)
                out << 100.0 * static_cast<double>(time) / static_cast<double>(duration)
                    << "%{visibility:" << (visible ? "visible" : "hidden") << "}";
        }
        return out.str();
    }

    long duration;
    std::map<Times, size_t> names;
};

}  // namespace

std::string svg_of(const ScreenImage& image, const std::string& title) {
    std::string svg;
    for (const auto& [place, elements] : drawing_of(image)) {
        std::string lines;
        for (const std::string& element : elements) lines += element;
        svg += group(place.second, lines);
    }
    return document(image, title, svg);
}

std::string moving_svg_of(const std::vector<Frame>& frames, const std::string& title) {
    Appearances all;
    Animations animations(collect(frames, all));
    std::string svg;
    for (const auto& [place, elements] : all) {
        std::map<Times, std::string> together;
        for (const auto& [element, times] : elements) together[times] += element;
        std::string groups;
        for (const auto& [times, lines] : together)
            groups += group(animations.attributes(times), lines);
        svg += group(place.second, groups);
    }
    return document(frames.at(0).image, title, animations.style() + svg);
}
