// How an image's pixels are to be read.
#pragma once

#include "standin/atil/atil_types.h"

namespace Atil {
/// A value: copies keep the type.
class HALVORAN_STANDIN_API DataModel
{
public:
    DataModel(DataModelAttributes::DataType dataType, DataModelAttributes::BitsPerPixel bitsPerPixel,
              int channelsPerPixel);

    DataModelAttributes::DataModelType dataModelType() const { return m_modelType; }
    DataModelAttributes::DataType dataType() const { return m_dataType; }
    /// 1, 8, 24 or 32.
    int bitsPerPixel() const;
    int channelsPerPixel() const { return m_channels; }
    bool operator==(const DataModel&) const = default;

protected:
    DataModelAttributes::DataModelType m_modelType = DataModelAttributes::kUnknownDataModel;

private:
    DataModelAttributes::DataType m_dataType;
    DataModelAttributes::BitsPerPixel m_bitsPerPixel;
    int m_channels;
};

/// Two values: paper and ink.
class HALVORAN_STANDIN_API BitonalModel : public DataModel
{
public:
    BitonalModel();
};
} // namespace Atil
