#include "alignment/box_keys.hpp"

namespace kesto {

std::int32_t FindKeys(const BoxNode& node, const BoxPoint& point, BoxKeys& keys) noexcept {
    for (std::int32_t i = 0; i < boxLanes; ++i) {
        const auto lane = static_cast<std::size_t>(i);
        const float awayX = std::fabs(node.centreX[lane] - point.x) - node.halfX[lane] - point.roundingX;
        const float awayY = std::fabs(node.centreY[lane] - point.y) - node.halfY[lane] - point.roundingY;
        const float twiceX = awayX + std::fabs(awayX);  // 0 inside
        const float twiceY = awayY + std::fabs(awayY);
        keys[lane] = (BoxKey((twiceX * twiceX + twiceY * twiceY) * 0.25F) & ~laneBits) | i;
    }
    return LeastOf(keys);
}

}  // namespace kesto
