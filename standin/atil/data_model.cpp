#include "standin/atil/data_model.h"

namespace Atil {

DataModel::DataModel(DataModelAttributes::DataType dataType, DataModelAttributes::BitsPerPixel bitsPerPixel,
                     int channelsPerPixel)
    : m_dataType(dataType), m_bitsPerPixel(bitsPerPixel), m_channels(channelsPerPixel)
{}

int DataModel::bitsPerPixel() const
{
    switch (m_bitsPerPixel) {
    case DataModelAttributes::k1:
        return 1;
    case DataModelAttributes::k8:
        return 8;
    case DataModelAttributes::k24:
        return 24;
    case DataModelAttributes::k32:
        return 32;
    }
    return 0;
}

BitonalModel::BitonalModel() : DataModel(DataModelAttributes::kBitonalData, DataModelAttributes::k1, 1)
{
    m_modelType = DataModelAttributes::kBitonalModel;
}

} // namespace Atil
