* What to carry: the most value in a bag that holds 9. Each thing once, water up to three times.
* Answer: tent and stove; value 15. Fractions of things would give 16 1/3.
NAME knapsack
OBJSENSE
 MAX
ROWS
 N value
 L weight
COLUMNS
 begin 'MARKER' 'INTORG'
 tent value 10 weight 6
 stove value 5 weight 3
 rope value 6 weight 4
 lamp value 3 weight 1
 axe value 4 weight 3
 water value 4 weight 3
 end 'MARKER' 'INTEND'
RHS
 bag weight 9
BOUNDS
 BV things tent
 BV things stove
 BV things rope
 BV things lamp
 BV things axe
 UI things water 3
ENDATA
