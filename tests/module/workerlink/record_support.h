#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "workerlink/SerializeMessage.h"

using Bytes = std::vector<BYTE>;

/// Bytes as they would be jotted down: pairs of hex digits, blanks where they help.
inline Bytes hex(const std::string& text)
{
    Bytes bytes;
    std::string digits;
    for (const char character : text) {
        if (character == ' ')
            continue;
        digits += character;
        if (digits.size() == 2) {
            bytes.push_back(static_cast<BYTE>(std::stoi(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return bytes;
}

inline std::string shown(const Bytes& bytes)
{
    std::string text;
    for (const BYTE value : bytes) {
        char pair[4];
        snprintf(pair, sizeof(pair), "%02X ", value);
        text += pair;
    }
    return text;
}

inline Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// The cause of the archive exception that reading the bytes raises; -1 when it raises none, -2 when another one.
inline int causeOfReading(WorkerMessage& message, const Bytes& bytes)
{
    try {
        DeserializeMessage(message, bytes.data(), bytes.size());
    } catch (CArchiveException* exception) {
        const int cause = exception->m_cause;
        exception->Delete();
        return cause;
    } catch (CException* exception) {
        exception->Delete();
        return -2;
    }
    return -1;
}
