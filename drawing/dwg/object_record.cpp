#include "drawing/dwg/object_record.h"

#include "drawing/field_writer.h"

namespace drawing::dwg {

namespace {

/// Gathers the groups of one object as a record.
class RecordSink final : public GroupSink
{
public:
    explicit RecordSink(Record& record) : m_record(record) {}

    void group(int code, std::string_view value) override
    {
        if (code == 0) {
            m_record.name = value;
        } else {
            m_record.groups.emplace_back(Group{code, std::string(value)});
        }
    }
    void real(int code, double value) override { m_record.groups.emplace_back(code, value); }

private:
    Record& m_record;
};

} // namespace

Record recordOf(const Object& object, const std::string& blockName)
{
    Record record;
    RecordSink sink(record);
    FieldWriter writer(sink);
    writer.context.blockName = blockName;
    writer.write(object);
    return record;
}

} // namespace drawing::dwg
