#ifndef KOR_BOX_H
#define KOR_BOX_H

/// Where something is in a frame, in pixels from the top left corner; never of negative size.
struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Box&) const = default;
};

#endif
