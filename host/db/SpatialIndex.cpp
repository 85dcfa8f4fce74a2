#include "host/db/SpatialIndex.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <iterator>
#include <utility>

namespace kelaz {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {
using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Value = std::pair<Box, AcDbStub*>;
// R* splits give the tightest nodes for the many small boxes of a drawing.
constexpr std::size_t kMaxNodeEntries = 16;

Box ToBox(const PlanBox& b) { return Box(Point(b.minX, b.minY), Point(b.maxX, b.maxY)); }
}  // namespace

struct SpatialIndex::Tree {
    bgi::rtree<Value, bgi::rstar<kMaxNodeEntries>> rtree;
};

SpatialIndex::SpatialIndex() : m_tree(std::make_unique<Tree>()) {}

SpatialIndex::~SpatialIndex() = default;

void SpatialIndex::update(AcDbStub* stub, const PlanBox& box) {
    if (stub->indexed) m_tree->rtree.remove(Value(ToBox(stub->indexedBox), stub));
    m_tree->rtree.insert(Value(ToBox(box), stub));
    stub->indexed = true;
    stub->indexedBox = box;
}

void SpatialIndex::remove(AcDbStub* stub) {
    if (!stub->indexed) return;
    m_tree->rtree.remove(Value(ToBox(stub->indexedBox), stub));
    stub->indexed = false;
}

void SpatialIndex::rebuild(const std::vector<AcDbStub*>& stubs) {
    std::vector<Value> values;
    values.reserve(stubs.size());
    for (AcDbStub* stub : stubs) {
        stub->indexed = true;
        values.emplace_back(ToBox(stub->indexedBox), stub);
    }
    // The packing constructor builds a balanced tree in one pass.
    m_tree->rtree = bgi::rtree<Value, bgi::rstar<kMaxNodeEntries>>(values);
}

void SpatialIndex::clear() {
    for (const Value& v : m_tree->rtree) v.second->indexed = false;
    m_tree->rtree.clear();
}

std::size_t SpatialIndex::size() const { return m_tree->rtree.size(); }

void SpatialIndex::queryIntersects(const PlanBox& box, std::vector<AcDbStub*>& out) const {
    m_tree->rtree.query(
        bgi::intersects(ToBox(box)),
        boost::make_function_output_iterator([&out](const Value& v) { out.push_back(v.second); }));
}

void SpatialIndex::queryCoveredBy(const PlanBox& box, std::vector<AcDbStub*>& out) const {
    m_tree->rtree.query(
        bgi::covered_by(ToBox(box)),
        boost::make_function_output_iterator([&out](const Value& v) { out.push_back(v.second); }));
}

}  // namespace kelaz
