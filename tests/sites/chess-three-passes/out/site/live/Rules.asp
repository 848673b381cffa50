<html><head><title>Rules for juniors</title></head>
<body>
<p>Live edition</p>
<h1>Rules for juniors</h1>
<!--BODY HERE-->
<p>Touch move: see touch.asp</p>
<p>Next: <a href="Standings.HTM.asp">Standings 2004</a></p>
<p>live\Rules, Rules, juniors/Rules.asp, *.asp</p>
</body></html>
