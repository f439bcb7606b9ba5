"""The player: a trial as one page that any browser shows, without server, network or extras.

=============  ===================================================================
view           `Trial.view`
player         `Player`: the page, its file, its place in a notebook
content        what of a trial goes into the page
packing        samples as base64 of 16 or 32 bits, to a stated precision
curves         the channels that are offered as curves
sides          which labels and events are of the left, which of the right
upright        which way is up, where a trial says it and where it does not
page           the page, put together from the sources below
page.html      its elements
player.css     how they look, light and dark, on phones and on projectors
data.js        the samples, as the page reads them
theme.js       light and dark: the colours that are drawn with
clock.js       the frame that is shown, and playing
camera.js      from the laboratory to pixels
lab.js         which way people go, how large they are, where the floor lies
stage.js       the picture in space: what is drawn, and in which order
floor.js       grid, plates, axes of the laboratory
names.js       names of what is meant, and of what has room for one
figure.js      markers, sticks, trails, segments
arrows.js      forces
pointer.js     orbit, pan, zoom, names and selection, by mouse and by touch
stretch.js     the stretch of time that is in view, for time line and curves
timeline.js    play, speed, single frames, events, gaps
curves.js      curves over time
controls.js    what is shown: switches, views, the list of markers
keyboard.js    keys
main.js        the beginning
=============  ===================================================================
"""

from __future__ import annotations

from .player import Player
from .view import view

__all__ = ["Player", "view"]
