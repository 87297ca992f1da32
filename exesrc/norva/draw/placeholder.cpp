// draw
