#pragma once

// Object snap for the length of a command: the drafter's running snaps are switched on when the
// command starts (a drafter who had none gets end, middle, centre and intersection points, the
// points a bundle of lines is traced through) and given back as they were when it ends.

class COsMode {
public:
    static constexpr int kSuspended = 16384;
    static constexpr int kCommandSnaps = 1 | 2 | 4 | 32;

    // on: 1 switches the snaps on, 0 off; either way the drafter's setting returns afterwards.
    explicit COsMode(int on);
    ~COsMode();
    COsMode(const COsMode&) = delete;
    COsMode& operator=(const COsMode&) = delete;

private:
    int m_previous = 0;
    bool m_changed = false;
};
