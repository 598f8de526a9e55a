#pragma once

#include <QSGNode>
#include <memory>

#include "app/matrix/hand_matrix_picture.h"

class QQuickWindow;

namespace tidewell {

/// A hand matrix in the scene graph. All of it is drawn from a few buffers that are written anew
/// with each picture, so a change costs the same however many cells it touches.
class HandMatrixNode : public QSGNode {
  public:
    /// A node for what the window renders with.
    static std::unique_ptr<HandMatrixNode> create(QQuickWindow* window);

    /// To be called while the GUI thread waits, as everything of the scene graph. The sheet is
    /// looked at anew only when its image is another one.
    virtual void show(const HandMatrixPicture& picture, const LabelSheet& sheet) = 0;
};

}  // namespace tidewell
