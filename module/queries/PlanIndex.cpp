#include "module/queries/PlanIndex.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <cmath>

namespace kelaz {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {

using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using RBox = bg::model::box<Point>;
using Value = std::pair<RBox, std::uint32_t>;
using RTree = bgi::rtree<Value, bgi::rstar<16>>;

// Far more than the few units in the last place that the host's point-to-segment distance can
// be off by, relative to the size of the coordinates.
constexpr double kRoundingSlack = 1e-12;

RBox ToRBox(const PlanIndex::Box& b) { return RBox(Point(b.minX, b.minY), Point(b.maxX, b.maxY)); }

double Magnitude(const PlanIndex::Box& b) {
    return std::max({std::fabs(b.minX), std::fabs(b.minY), std::fabs(b.maxX), std::fabs(b.maxY)});
}

PlanIndex::Box Widen(PlanIndex::Box b, double by) {
    b.minX -= by;
    b.minY -= by;
    b.maxX += by;
    b.maxY += by;
    return b;
}

}  // namespace

PlanIndex::Box PlanIndex::Box::Of(const AcGePoint2d& a, const AcGePoint2d& b) {
    const Box tight{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    return Widen(tight, kRoundingSlack * Magnitude(tight));
}

PlanIndex::Box PlanIndex::Box::Of(const AcGePoint3d& a, const AcGePoint3d& b) {
    return Of(AcGePoint2d(a.x, a.y), AcGePoint2d(b.x, b.y));
}

PlanIndex::Box PlanIndex::Box::Grown(double reach) const {
    return Widen(*this, reach + kRoundingSlack * (reach + Magnitude(*this)));
}

bool PlanIndex::Box::IsFinite() const {
    return std::isfinite(minX) && std::isfinite(minY) && std::isfinite(maxX) && std::isfinite(maxY);
}

struct PlanIndex::Tree {
    RTree rtree;
};

PlanIndex::PlanIndex() : m_tree(std::make_unique<Tree>()) {}

PlanIndex::~PlanIndex() = default;

PlanIndex::PlanIndex(const PlanIndex& other) : m_tree(std::make_unique<Tree>(*other.m_tree)) {}

PlanIndex& PlanIndex::operator=(const PlanIndex& other) {
    if (this != &other) m_tree = std::make_unique<Tree>(*other.m_tree);
    return *this;
}

PlanIndex::PlanIndex(PlanIndex&& other) noexcept : m_tree(std::make_unique<Tree>()) {
    std::swap(m_tree, other.m_tree);
}

PlanIndex& PlanIndex::operator=(PlanIndex&& other) noexcept {
    std::swap(m_tree, other.m_tree);
    return *this;
}

void PlanIndex::Rebuild(const std::vector<std::pair<Box, std::uint32_t>>& entries) {
    std::vector<Value> values;
    values.reserve(entries.size());
    for (const auto& [box, handle] : entries) values.emplace_back(ToRBox(box), handle);
    m_tree->rtree = RTree(values);
}

void PlanIndex::Insert(const Box& box, std::uint32_t handle) {
    m_tree->rtree.insert(Value(ToRBox(box), handle));
}

bool PlanIndex::Remove(const Box& box, std::uint32_t handle) {
    return m_tree->rtree.remove(Value(ToRBox(box), handle)) > 0;
}

void PlanIndex::Clear() { m_tree->rtree.clear(); }

std::size_t PlanIndex::Size() const { return m_tree->rtree.size(); }

void PlanIndex::Query(const Box& box, std::vector<std::uint32_t>& out) const {
    m_tree->rtree.query(
        bgi::intersects(ToRBox(box)),
        boost::make_function_output_iterator([&out](const Value& v) { out.push_back(v.second); }));
}

}  // namespace kelaz
