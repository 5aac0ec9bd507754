#include "standin/arx/strictness.h"

#include "standin/host.h"

namespace standin {

namespace {
std::vector<std::string>& list()
{
    static std::vector<std::string> sentences;
    return sentences;
}
} // namespace

void recordBreach(std::string sentence)
{
    list().push_back(std::move(sentence));
}

std::vector<std::string> breaches()
{
    return list();
}

void clearBreaches()
{
    list().clear();
}

} // namespace standin
