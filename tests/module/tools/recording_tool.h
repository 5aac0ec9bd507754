#pragma once

#include <string>
#include <vector>

#include "module/tools/CTool.h"

/// What tools were asked, in words; outlives them.
extern std::vector<std::string> calls;

/// A tool that takes down what it is asked, and answers as it is told.
class RecordingTool : public CTool
{
public:
    RecordingTool() = default;
    ~RecordingTool() override { calls.push_back("end"); }

    int ToolId() override { return m_id; }
    void UpdateCursor() override
    {
        calls.push_back("cursor");
        if (m_endAtCursor)
            delete this;
    }
    int OnLButtonDown(CPoint point, UINT flags) override { return record("left down", point, flags); }
    int OnRButtonDown(CPoint point, UINT flags) override { return record("right down", point, flags); }
    int OnLButtonUp(CPoint point, UINT flags) override { return record("left up", point, flags); }
    int OnRButtonUp(CPoint point, UINT flags) override { return record("right up", point, flags); }
    int OnLButtonDblClk(CPoint point, UINT flags) override { return record("double", point, flags); }
    int OnMouseMove(CPoint point, UINT flags) override { return record("move", point, flags); }
    int OnCommand(UINT id) override
    {
        calls.push_back("command " + std::to_string(id));
        return m_answer;
    }
    int PreMessage(MSG*) override { return m_swallow; }

    int m_id = 0;
    int m_answer = 1;
    int m_swallow = 0;
    bool m_endAtCursor = false;

private:
    int record(const char* what, CPoint point, UINT flags)
    {
        calls.push_back(std::string(what) + " " + std::to_string(point.x) + "," + std::to_string(point.y) + " " +
                        std::to_string(flags));
        return m_answer;
    }
};
