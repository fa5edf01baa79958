// HABMPortMap.cpp: construction and copying of a port map.
#include "blockmodel/HABMPortMap.h"

#include <utility>

HABMPortMap::HABMPortMap(std::string logName, std::string phyName)
    : logName_(std::move(logName)), phyName_(std::move(phyName)) {}

void HABMPortMap::clone(HABMPortMap const& source) {
  *this = source;
}
